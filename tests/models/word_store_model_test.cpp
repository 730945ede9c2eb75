// Long random sequences of changes to a word store, held against a plain model.

#include "tests/models/choices.h"
#include "tests/models/model_operations.h"
#include "tests/models/word_store_operations.h"

#include <gtest/gtest.h>

namespace {

TEST(WordStoreOperations, LeaveWhatADequeOfStringsWouldHold) {
    kvr_test::run_model_operations<kvr_test::word_store_operations>();
}

} // namespace

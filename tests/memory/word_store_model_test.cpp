// Long random sequences of changes to a word store, held against a plain model.

#include "tests/memory/choices.h"
#include "tests/memory/model_operations.h"
#include "tests/memory/word_store_operations.h"

#include <gtest/gtest.h>

namespace {

TEST(WordStoreOperations, LeaveWhatADequeOfStringsWouldHold) {
    kvr_test::run_model_operations<kvr_test::word_store_operations>();
}

} // namespace

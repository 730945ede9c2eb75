// Long random sequences of changes to a comment store, held against a plain model.

#include "tests/memory/choices.h"
#include "tests/memory/comment_store_operations.h"
#include "tests/memory/model_operations.h"

#include <gtest/gtest.h>

namespace {

TEST(CommentStoreOperations, LeaveWhatADequeOfStringsWouldHold) {
    kvr_test::run_model_operations<kvr_test::comment_store_operations>();
}

} // namespace

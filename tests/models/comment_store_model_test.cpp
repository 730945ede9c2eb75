// Long random sequences of changes to a comment store, compared with a plain model.

#include "tests/models/choices.h"
#include "tests/models/comment_store_operations.h"
#include "tests/models/model_operations.h"

#include <gtest/gtest.h>

namespace {

TEST(CommentStoreOperations, LeaveWhatADequeOfStringsWouldHold) {
    kvr_test::run_model_operations<kvr_test::comment_store_operations>();
}

} // namespace

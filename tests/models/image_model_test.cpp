// Random sequences of operations on memories, files and objects of the tool, each compared with a plain
// model.

#include "tests/models/assignment_file_operations.h"
#include "tests/models/edit_operations.h"
#include "tests/models/edit_pieces_operations.h"
#include "tests/models/memory_image_operations.h"
#include "tests/models/message_splitter_operations.h"
#include "tests/models/model_operations.h"
#include "tests/models/quoted_text_operations.h"
#include "tests/models/replacement_file_operations.h"
#include "tests/models/text_buffer_operations.h"
#include "tests/models/transformation_operations.h"

#include <gtest/gtest.h>

namespace {

using kvr_test::run_model_operations;

TEST(AssignmentFileOperations, AreReadLikeTheirLinesAndAssignTheSameWhenWrittenAgain) {
    run_model_operations<kvr_test::assignment_file_operations>();
}

TEST(EditOperations, KeepCommentsAndCanBeUndone) {
    run_model_operations<kvr_test::edit_operations>();
}

TEST(EditPiecesOperations, HandOutTheWordOfEachAddress) {
    run_model_operations<kvr_test::edit_pieces_operations>();
}

TEST(MemoryImageOperations, LeaveWhatAVectorOfWordsWouldHold) {
    run_model_operations<kvr_test::memory_image_operations>();
}

TEST(MergeOperations, MakeThePlainWordsAndJoinWhatWasSelected) {
    run_model_operations<kvr_test::merge_operations>();
}

TEST(MessageSplitterOperations, FindTheMessagesOfTheWholeStream) {
    run_model_operations<kvr_test::message_splitter_operations>();
}

TEST(ProtectionOperations, GiveTheDataBack) {
    run_model_operations<kvr_test::protection_operations>();
}

TEST(QuotedTextOperations, AreParsedByteByByte) {
    run_model_operations<kvr_test::quoted_text_operations>();
}

TEST(ReplacementFileOperations, LeaveTheOldContentsOrTheNewOnes) {
    run_model_operations<kvr_test::replacement_file_operations>();
}

TEST(ReshapeOperations, MakeThePlainWordsAndCanBeUndone) {
    run_model_operations<kvr_test::reshape_operations>();
}

TEST(SplitOperations, MakeThePlainPartsAndCanBeUndone) {
    run_model_operations<kvr_test::split_operations>();
}

TEST(TextBufferOperations, FollowAPlainText) {
    run_model_operations<kvr_test::text_buffer_operations>();
}

} // namespace

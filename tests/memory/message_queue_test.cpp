#include "tests/memory/memory_fixture.h"

namespace {

using testing::Test;

TEST(MessageQueue, MessagesComeOutInTheOrderInWhichTheyWereAdded) {
    KVR_MEMORY_FILE file;
    file.add_error_message("A");
    file.add_error_message("B");
    file.reset_error_message_list();
    EXPECT_EQ(file.get_next_error_message(), "A");
    EXPECT_EQ(file.get_next_error_message(), "B");
    EXPECT_EQ(file.get_next_error_message(), "");
    EXPECT_EQ(file.get_next_error_message(), "");
}

TEST(MessageQueue, AMessageAddedAfterAFinishedWalkIsSeenAfterTheNextResetOnly) {
    KVR_MEMORY_FILE file;
    file.add_error_message("A");
    file.add_error_message("B");
    EXPECT_EQ(kvr_test::error_messages(file), (std::vector<std::string>{"A", "B"}));
    file.add_error_message("C");
    EXPECT_EQ(file.get_next_error_message(), "");
    EXPECT_EQ(kvr_test::error_messages(file), (std::vector<std::string>{"A", "B", "C"}));
}

TEST(MessageQueue, MessagesStayAfterTheyWereRead) {
    KVR_MEMORY_FILE file;
    EXPECT_FALSE(file.has_error_messages());
    file.add_error_message("A");
    EXPECT_EQ(kvr_test::error_messages(file).size(), 1U);
    EXPECT_TRUE(file.has_error_messages());
}

TEST(MessageQueue, AMessageAddedDuringAWalkIsSeenInTurn) {
    KVR_MEMORY_FILE file;
    file.add_error_message("A");
    file.add_error_message("B");
    file.reset_error_message_list();
    EXPECT_EQ(file.get_next_error_message(), "A");
    file.add_error_message("C");
    EXPECT_EQ(file.get_next_error_message(), "B");
    EXPECT_EQ(file.get_next_error_message(), "C");
    EXPECT_EQ(file.get_next_error_message(), "");
}

TEST(MessageQueue, TheThreeKindsAreIndependent) {
    KVR_MEMORY_FILE file;
    file.add_error_message("error");
    file.reset_error_message_list();
    file.add_warning_message("warning");
    file.add_info_message("first info");
    file.add_info_message("second info");
    EXPECT_EQ(file.get_next_error_message(), "error");
    EXPECT_EQ(file.get_next_error_message(), "");
    file.reset_warning_message_list();
    EXPECT_EQ(file.get_next_warning_message(), "warning");
    EXPECT_EQ(file.get_next_warning_message(), "");
    file.reset_info_message_list();
    EXPECT_EQ(file.get_next_info_message(), "first info");
    EXPECT_EQ(file.get_next_info_message(), "second info");
    EXPECT_TRUE(file.has_warning_messages());
    EXPECT_TRUE(file.has_info_messages());
}

TEST(MessageQueue, NothingIsHandedOutBeforeTheFirstReset) {
    KVR_MEMORY_FILE file;
    EXPECT_EQ(file.get_next_error_message(), "");
    file.add_error_message("A");
    EXPECT_EQ(file.get_next_error_message(), "");
    EXPECT_EQ(file.get_next_warning_message(), "");
    EXPECT_EQ(file.get_next_info_message(), "");
}

TEST(MessageQueue, AResetOfAnEmptyListLeavesNothingToRead) {
    KVR_MEMORY_FILE file;
    file.reset_info_message_list();
    EXPECT_EQ(file.get_next_info_message(), "");
    file.add_info_message("late");
    EXPECT_EQ(file.get_next_info_message(), "");
}

} // namespace

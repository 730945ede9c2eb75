#include "kvrimage/edit/text_lines.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(TextLines, StartsFollowALineFeed) {
    EXPECT_EQ(start_of_line("ab\ncd\n", 1), 0U);
    EXPECT_EQ(start_of_line("ab\ncd\n", 2), 0U);
    EXPECT_EQ(start_of_line("ab\ncd\n", 3), 3U);
    EXPECT_EQ(start_of_line("ab\ncd\n", 6), 6U);
}

TEST(TextLines, EndBeforeTheirLineEnd) {
    EXPECT_EQ(end_of_line("ab\ncd", 0), 2U);
    EXPECT_EQ(end_of_line("ab\r\ncd", 0), 2U);
    EXPECT_EQ(end_of_line("ab\r\ncd", 4), 6U);
    EXPECT_EQ(end_of_line("\r\n", 1), 1U);
}

TEST(TextLines, NextBeginsAfterTheLineEndOrAtTheEnd) {
    EXPECT_EQ(next_line("ab\r\ncd", 1), 4U);
    EXPECT_EQ(next_line("ab\r\ncd", 4), 6U);
}

TEST(TextLines, TakeTheLineEndOfTheLineBefore) {
    EXPECT_EQ(line_end_at("a\r\nb\n", 3), "\r\n");
    EXPECT_EQ(line_end_at("a\nb\r\n", 2), "\n");
    EXPECT_EQ(line_end_at("\r\nb\n", 2), "\r\n");
    EXPECT_EQ(line_end_at("\nb\r\n", 1), "\n");
}

TEST(TextLines, FirstLineHasItsOwnLineEnd) {
    EXPECT_EQ(line_end_at("a\r\nb\n", 0), "\r\n");
    EXPECT_EQ(line_end_at("a\nb\r\n", 0), "\n");
    EXPECT_EQ(line_end_at("\n", 0), "\n");
}

TEST(TextLines, TheLastOneBeginsALineOfItsOwn) {
    EXPECT_EQ(as_last_line("", "new"), "new\n");
    EXPECT_EQ(as_last_line("a\r\n", "new"), "new\r\n");
    EXPECT_EQ(as_last_line("a\r\nb", "new"), "\r\nnew\r\n");
}

TEST(TextLines, EndWithLineFeedInATextWithoutLineEnds) {
    EXPECT_EQ(line_end_at("a", 0), "\n");
    EXPECT_EQ(line_end_at("", 0), "\n");
}

} // namespace

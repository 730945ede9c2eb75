#include "kvrimage/layout/aligned_lines.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using kvrimage::aligned_lines;

void add_line(aligned_lines& lines, const std::string& text, const std::string& comment = "") {
    lines.begin_line(text);
    EXPECT_TRUE(comment.empty() || lines.add_comment(comment, true));
}

TEST(AlignedLines, CommentsOfNeighboursStandInOneColumn) {
    aligned_lines lines("\n");
    add_line(lines, "a", "-- 1");
    add_line(lines, "long", "-- 2");
    add_line(lines, "longest");
    add_line(lines, "b", "-- 3");
    EXPECT_EQ(lines.finish(), "a     -- 1\nlong  -- 2\nlongest\nb  -- 3\n");
}

TEST(AlignedLines, BlankLinesAndCommentLinesEndAColumn) {
    aligned_lines lines("\r\n");
    add_line(lines, "a", "-- 1");
    lines.separate();
    add_line(lines, "long", "-- 2");
    lines.begin_comment_line("\t", "-- alone  ", true);
    add_line(lines, "b", "-- 3");
    EXPECT_EQ(lines.finish(), "a  -- 1\r\n\r\nlong  -- 2\r\n\t-- alone\r\nb  -- 3\r\n");
}

TEST(AlignedLines, ThereIsNoBlankLineBeforeTheFirst) {
    aligned_lines lines("\n");
    lines.separate();
    add_line(lines, "a");
    EXPECT_EQ(lines.finish(), "a\n");
}

TEST(AlignedLines, TextGoesBeforeTheComments) {
    aligned_lines lines("\n");
    lines.begin_line("0 : 1");
    EXPECT_TRUE(lines.add_comment("% a %", false));
    lines.append(" 2;");
    EXPECT_EQ(lines.length(), 8U);
    EXPECT_TRUE(lines.add_comment("-- b", true));
    EXPECT_FALSE(lines.add_comment("-- c", true)) << "it would become part of the one before";
    EXPECT_EQ(lines.finish(), "0 : 1 2;  % a % -- b\n");
}

TEST(AlignedLines, WithoutALineThereIsNoPlaceForAComment) {
    aligned_lines lines("\n");
    EXPECT_FALSE(lines.has_open_text());
    EXPECT_FALSE(lines.add_comment("-- a", true));
    lines.begin_comment_line("", "% a %", false);
    EXPECT_FALSE(lines.has_open_text());
    EXPECT_TRUE(lines.add_comment("% b %", false));
    EXPECT_EQ(lines.finish(), "% a % % b %\n");
}

TEST(AlignedLines, CommentThatDoesNotFitItsColumnStandsBesideIt) {
    aligned_lines lines("\n", 12);
    add_line(lines, "0123456", "--");
    add_line(lines, "a", "-- 56789");
    EXPECT_EQ(lines.finish(), "0123456  --\na  -- 56789\n");
}

TEST(AlignedLines, TextNeverGoesIntoALineOfComments) {
    aligned_lines lines("\n");
    lines.append("0");
    lines.begin_comment_line("\t", "% a %", false);
    lines.append("1");
    lines.append(" 2");
    EXPECT_EQ(lines.finish(), "0\n\t% a %\n1 2\n");
}

TEST(AlignedLines, CommentThatDoesNotFitItsLineComesBeforeItWithItsOwnIndent) {
    aligned_lines lines("\n", 10);
    add_line(lines, "\ta", "-- 1");
    lines.begin_line("    ab", "\t");
    EXPECT_TRUE(lines.add_comment("-- 456", true));
    add_line(lines, "\tabc", "-- 456");
    lines.begin_line("\tabc", "\t");
    EXPECT_TRUE(lines.add_comment("-- 4567890", true));
    EXPECT_EQ(lines.finish(), "\ta  -- 1\n\t-- 456\n    ab\n-- 456\n\tabc\n-- 4567890\n\tabc\n");
}

TEST(AlignedLines, OfACommentOfSeveralLinesTheFirstHasToFit) {
    aligned_lines lines("\n", 10);
    lines.begin_line("a");
    EXPECT_TRUE(lines.add_comment("% 4567\n90123456 %", false));
    EXPECT_EQ(lines.finish(), "a  % 4567\n90123456 %\n");
}

} // namespace

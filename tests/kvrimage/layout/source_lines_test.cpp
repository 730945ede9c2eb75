#include "kvrimage/layout/source_lines.h"

#include <gtest/gtest.h>

namespace {

using kvrimage::byte_order_mark_of;
using kvrimage::line_gap;
using kvrimage::source_lines;

TEST(SourceLines, GapsCountFromThePieceThatWasPassed) {
    source_lines lines("a b\nc\r\nd\n \ne");
    EXPECT_EQ(lines.gap_before(2), line_gap::none);
    EXPECT_EQ(lines.gap_before(4), line_gap::line);
    EXPECT_EQ(lines.gap_before(7), line_gap::blank);
    lines.pass({4, 1});
    EXPECT_EQ(lines.end(), 5U);
    EXPECT_EQ(lines.gap_before(7), line_gap::line);
    EXPECT_EQ(lines.gap_before(2), line_gap::none);
    lines.pass({7, 1});
    EXPECT_EQ(lines.gap_before(11), line_gap::blank);
}

TEST(SourceLines, CarriageReturnsAloneEndLines) {
    EXPECT_EQ(source_lines("a\rb").gap_before(2), line_gap::line);
    EXPECT_EQ(source_lines("a\r\rb").gap_before(3), line_gap::blank);
}

TEST(SourceLines, MarkOfUtf8) {
    EXPECT_EQ(byte_order_mark_of("\xEF\xBB\xBF"
                                 "a"),
              "\xEF\xBB\xBF");
    EXPECT_EQ(byte_order_mark_of("\xEF\xBB"), "");
}

} // namespace

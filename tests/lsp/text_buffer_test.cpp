#include "tools/kvrmem/lsp/text_buffer.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using kvrmem::lsp::position_encoding;
using kvrmem::lsp::text_buffer;
using kvrmem::lsp::text_position;

TEST(TextBuffer, CountsSurrogatePairsAsTwo) {
    const text_buffer buffer("a\xF0\x9F\x98\x80z", position_encoding::utf16);
    EXPECT_EQ(buffer.position_of(5), (text_position{0, 3}));
    EXPECT_EQ(buffer.offset_of({0, 3}), 5U);
    EXPECT_EQ(buffer.offset_of({0, 2}), 1U); // between the two
}

TEST(TextBuffer, CutsPositionsThatAreBeyond) {
    const text_buffer buffer("ab\r\ncd", position_encoding::utf16);
    EXPECT_EQ(buffer.offset_of({0, 99}), 2U);
    EXPECT_EQ(buffer.offset_of({1, 99}), 6U);
    EXPECT_EQ(buffer.offset_of({2, 0}), 6U);
    EXPECT_EQ(buffer.offset_of({~std::uint64_t{0}, ~std::uint64_t{0}}), 6U);
}

TEST(TextBuffer, KnowsItsLines) {
    const text_buffer buffer("ab\r\n\rcd\n", position_encoding::utf8);
    ASSERT_EQ(buffer.line_count(), 4U);
    EXPECT_EQ(buffer.start_of(1), 4U);
    EXPECT_EQ(buffer.end_of(0), 2U);
    EXPECT_EQ(buffer.end_of(1), 4U);
    EXPECT_EQ(buffer.end_of(2), 7U);
    EXPECT_EQ(buffer.end_of(3), 8U);
    EXPECT_EQ(buffer.line_of(3), 0U);
    EXPECT_EQ(buffer.line_of(8), 3U);
}

} // namespace

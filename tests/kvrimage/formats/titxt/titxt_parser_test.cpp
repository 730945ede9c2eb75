#include "kvrimage/formats/titxt/titxt_parser.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

std::string pieces_of(std::string_view text) {
    constexpr std::string_view names = "@bq!?";
    std::string shown;
    titxt_parser parser(text);
    while (parser.next()) {
        const titxt_piece& piece = parser.piece();
        shown += names[static_cast<std::size_t>(piece.what)];
        shown += "[" + std::string(piece.where.in(text)) + "]";
    }
    return shown;
}

TEST(TitxtParser, HandsOutAddressesBytesAndTheEnd) {
    EXPECT_EQ(pieces_of("@F000\n31 40 00 03\r\n35 d0\n@fffe\n00 F0\nq\n"),
              "@[@F000]b[31 40 00 03\r\n35 d0]@[@fffe]b[00 F0]q[q]");
    EXPECT_EQ(pieces_of("@0 1F\tQ"), "@[@0]b[1F]q[Q]");
    EXPECT_EQ(pieces_of(" \r\n\t"), "");
}

TEST(TitxtParser, WhatIsNeitherIsHandedOutAsItIs) {
    EXPECT_EQ(pieces_of("@"), "![@]");
    EXPECT_EQ(pieces_of("@1Z 1"), "![@1Z]?[1]");
    EXPECT_EQ(pieces_of("@-1 @100000000 @0FFFFFFFF"), "![@-1]![@100000000]@[@0FFFFFFFF]");
    EXPECT_EQ(pieces_of("123 12 0x12 1G qq 34"), "?[123]b[12]?[0x12]?[1G]?[qq]b[34]");
}

TEST(TitxtParser, ValuesAreThoseOfTheDigits) {
    titxt_parser parser("@aBc\n00 7f FF");
    ASSERT_TRUE(parser.next());
    EXPECT_EQ(parser.piece().address, 0xABCU);
    ASSERT_TRUE(parser.next());
    EXPECT_EQ(parser.piece().bytes, std::string_view("\0\x7F\xFF", 3));
}

TEST(TitxtParser, EveryByteHasItsPlace) {
    const std::string text = "01 02\r\n03   04";
    titxt_parser parser(text);
    ASSERT_TRUE(parser.next());
    EXPECT_EQ(span_of_titxt_byte(text, parser.piece(), 0).offset, 0U);
    EXPECT_EQ(span_of_titxt_byte(text, parser.piece(), 2).in(text), "03");
    EXPECT_EQ(span_of_titxt_byte(text, parser.piece(), 3).offset, 12U);
}

TEST(TitxtParser, ManyBytesComeInSeveralPieces) {
    std::string text;
    for (int count = 0; count < 1000; ++count) {
        text += "5A ";
    }
    std::size_t bytes = 0;
    titxt_parser parser(text);
    while (parser.next()) {
        EXPECT_EQ(parser.piece().what, titxt_piece::kind::bytes);
        bytes += parser.piece().bytes.size();
    }
    EXPECT_EQ(bytes, 1000U);
}

} // namespace

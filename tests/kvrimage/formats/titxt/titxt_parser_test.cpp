#include "kvrimage/formats/titxt/fast_titxt_bytes.h"
#include "kvrimage/formats/titxt/titxt_parser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

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

/// The separate bytes at the front of @p text, up to the first word that is not a byte.
std::string plain_bytes_of(const std::string& text) {
    std::string bytes;
    std::size_t at = text.find_first_not_of(" \t\n\v\f\r");
    while (at != std::string::npos) {
        const std::size_t end = std::min(text.find_first_of(" \t\n\v\f\r", at), text.size());
        const std::string one = text.substr(at, end - at);
        if (one.size() != 2 || one.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos) {
            break;
        }
        bytes += static_cast<char>(std::stoul(one, nullptr, 16));
        at = text.find_first_not_of(" \t\n\v\f\r", end);
    }
    return bytes;
}

TEST(TitxtParser, EveryCharacterCountsInLinesThatAreTakenAtOnce) {
    const std::string line = "01 23 45 67 89 ab CD ef\n10 32 54 76\r\n98 BA dc FE 0F\n";
    for (std::size_t place = 0; place < line.size(); ++place) {
        for (int character = 0; character < 256; ++character) {
            std::string text = line;
            text[place] = static_cast<char>(character);
            const std::string expected = plain_bytes_of(text);
            titxt_parser parser(text);
            if (parser.next() && parser.piece().what == titxt_piece::kind::bytes) {
                ASSERT_EQ(parser.piece().bytes, expected) << text;
            } else {
                ASSERT_EQ(expected, "") << text;
            }
        }
    }
}

TEST(TitxtParser, FiveBytesAtOnceAreThoseOfEachDigit) {
    for (int value = 0; value < 256; ++value) {
        for (std::size_t place = 0; place < 16; ++place) {
            std::string text = "12 34\t56\n78\r9a b";
            text[place] = static_cast<char>(value);
            std::array<char, 8> bytes{};
            std::array<char, 8> portable_bytes{};
            const bool is_taken = parse_five_titxt_bytes(text.data(), bytes.data());
            ASSERT_EQ(is_taken, portable::parse_five_titxt_bytes(text.data(), portable_bytes.data())) << text;
            ASSERT_TRUE(!is_taken || std::equal(bytes.begin(), bytes.begin() + 5, portable_bytes.begin()));
        }
    }
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

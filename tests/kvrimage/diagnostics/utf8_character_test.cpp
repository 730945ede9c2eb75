#include "kvrimage/diagnostics/character_ranges.h"
#include "kvrimage/diagnostics/utf8_character.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

struct character_case {
    std::string_view text;
    std::size_t length;
    char32_t code;
    bool is_shown;
};

TEST(Utf8Character, IsWhatTheTextBeginsWith) {
    const character_case cases[] = {
        {"A", 1, U'A', true},
        {"\xC3\xA9x", 2, U'\u00E9', true},
        {"\xE2\x82\xAC", 3, U'\u20AC', true},
        {"\xF0\x9F\x98\x80", 4, U'\U0001F600', true},
        // The first and the last character of each length, and the neighbors of the surrogates.
        {"\xC2\x80", 2, 0x80, false},
        {"\xDF\xBF", 2, 0x7FF, true},
        {"\xE0\xA0\x80", 3, 0x800, true},
        {"\xED\x9F\xBF", 3, 0xD7FF, true},
        {"\xEE\x80\x80", 3, 0xE000, true},
        {"\xEF\xBF\xBF", 3, 0xFFFF, false},
        {"\xF0\x90\x80\x80", 4, 0x10000, true},
        {"\xF4\x8F\xBF\xBF", 4, 0x10FFFF, true},
        {std::string_view("\0", 1), 1, 0, false},
        {"\x7F", 1, 0x7F, false},
        {"\xC2\x85", 2, 0x85, false},
        {"\xE2\x80\xAE", 3, 0x202E, false}, // changes the direction of text
        {"\xEF\xBB\xBF", 3, 0xFEFF, false},
    };
    for (const character_case& each : cases) {
        const utf8_character found = first_character(each.text);
        EXPECT_EQ(found.bytes, each.text.substr(0, each.length));
        EXPECT_EQ(found.code, each.code);
        EXPECT_EQ(found.is_shown, each.is_shown) << static_cast<std::uint32_t>(each.code);
    }
}

TEST(Utf8Character, IsOneByteWhereNoneBegins) {
    const std::string_view texts[] = {
        "\x80",             // in the middle of a character
        "\xFF",             // never in UTF-8
        "\xC3",             // cut
        "\xDF",             //
        "\xE2\x82",         //
        "\xEF\xBF",         //
        "\xF0\x9F\x98",     //
        "\xF7\xBF\xBF",     //
        "\xC3(",            // without its second byte
        "\xC0\xAF",         // longer than necessary
        "\xED\xA0\x80",     // half of a character
        "\xED\xBF\xBF",     //
        "\xF4\x90\x80\x80", // beyond the last character
    };
    for (const std::string_view text : texts) {
        const utf8_character found = first_character(text);
        EXPECT_EQ(found.bytes, text.substr(0, 1));
        EXPECT_EQ(found.code, 0U);
        EXPECT_FALSE(found.is_shown);
    }
}

TEST(Utf8Character, StartsAtOrBeforeAPlace) {
    const std::string_view text = "a\xF0\x9F\x98\x80z";
    const std::size_t starts[] = {0, 1, 1, 1, 1, 5, 6};
    for (std::size_t at = 0; at <= text.size(); ++at) {
        EXPECT_EQ(character_start(text, at), starts[at]) << at;
    }
}

TEST(Utf8Character, StartsAFewBytesBackAmongStrayBytes) {
    EXPECT_EQ(character_start("\x80\x80\x80\x80\x80\x80", 5), 2U);
    EXPECT_EQ(character_start("\x80\x80", 1), 0U);
}

TEST(CharacterRanges, AreInOrderWhenNoneTouchesAnother) {
    const character_range ranges[] = {{1, 3}, {5, 5}, {9, 12}};
    EXPECT_TRUE(is_in_order(ranges));
    const character_range overlapping[] = {{1, 3}, {3, 5}};
    EXPECT_FALSE(is_in_order(overlapping));
    const character_range backwards[] = {{3, 1}};
    EXPECT_FALSE(is_in_order(backwards));
}

TEST(CharacterRanges, HaveTheirFirstAndLastCharacters) {
    const character_range ranges[] = {{1, 3}, {5, 5}, {9, 12}};
    std::string found;
    for (char32_t code = 0; code < 14; ++code) {
        found += is_in(ranges, code) ? 'y' : '.';
    }
    EXPECT_EQ(found, ".yyy.y...yyyy.");
}

} // namespace

#include "kvrimage/diagnostics/character_width.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

using namespace kvrimage;

TEST(CharacterWidth, IsOneForPlainCharacters) {
    for (const char32_t code :
         {U'0', U'~', U'\u00E9', U'\u0416', U'\u0370', U'\u1160', U'\u2013', U'\u2603', U'\uFFFD'}) {
        EXPECT_EQ(columns_of_character(code), 1U) << static_cast<std::uint32_t>(code);
    }
}

TEST(CharacterWidth, IsTwoForEastAsianScripts) {
    for (const char32_t code : {U'\u1100', U'\u115F', U'\u3042', U'\u30AB', U'\u4E00', U'\u9FFF', U'\uAC00',
                                U'\uD7A3', U'\uFF21', U'\uFFE6', U'\U00020000', U'\U0003FFFD'}) {
        EXPECT_EQ(columns_of_character(code), 2U) << static_cast<std::uint32_t>(code);
    }
}

TEST(CharacterWidth, IsTwoForPictures) {
    for (const char32_t code :
         {U'\u231A', U'\u26A1', U'\u2705', U'\U0001F600', U'\U0001F680', U'\U0001F9E0'}) {
        EXPECT_EQ(columns_of_character(code), 2U) << static_cast<std::uint32_t>(code);
    }
}

TEST(CharacterWidth, IsNoneForMarksOnTheCharacterBefore) {
    for (const char32_t code :
         {U'\u0300', U'\u036F', U'\u200D', U'\u20D0', U'\u3099', U'\uFE0F', U'\U00016FE4', U'\U000E0100'}) {
        EXPECT_EQ(columns_of_character(code), 0U) << static_cast<std::uint32_t>(code);
    }
}

struct unicode_plane {
    char32_t first;
    std::size_t without_width;
    std::size_t of_double_width;
};

/// The numbers of the character database: combining marks and invisible characters, and other characters
/// whose East Asian width is "W" or "F".
TEST(CharacterWidth, IsThatOfAsManyCharactersAsInUnicode) {
    constexpr char32_t plane_size = 0x10000;
    for (const unicode_plane& each :
         {unicode_plane{0x0, 421, 42173}, unicode_plane{0x10000, 1, 9303}, unicode_plane{0x20000, 0, 65534},
          unicode_plane{0x30000, 0, 65534}, unicode_plane{0xE0000, 240, 0}, unicode_plane{0x100000, 0, 0}}) {
        std::array<std::size_t, 3> counts{};
        for (char32_t code = each.first; code < each.first + plane_size; ++code) {
            ++counts[columns_of_character(code)];
        }
        EXPECT_EQ(counts[0], each.without_width) << static_cast<std::uint32_t>(each.first);
        EXPECT_EQ(counts[2], each.of_double_width) << static_cast<std::uint32_t>(each.first);
    }
}

} // namespace

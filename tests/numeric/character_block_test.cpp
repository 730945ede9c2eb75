#include "kvr/numeric/character_block.h"
#include "kvr/util/letter_case.h"
#include "tests/numeric/mostly_digits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvr;

std::string sixteen_with(char character, std::size_t at) {
    std::string text = "0123456789ABCDEF";
    text[at] = character;
    return text;
}

/// Expects the same result from each way of reading a limb.
void expect_hex_limb(const std::string& text) {
    const bool is_valid = text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    std::uint64_t limb = 0;
    ASSERT_EQ(portable::read_sixteen(text.data(), limb), is_valid) << testing::PrintToString(text);
    if (is_valid) {
        ASSERT_EQ(limb, std::stoull(text, nullptr, 16));
    }
    ASSERT_EQ(read_sixteen(text.data(), limb), is_valid) << testing::PrintToString(text);
    if (is_valid) {
        ASSERT_EQ(limb, std::stoull(text, nullptr, 16));
    }
}

TEST(EightCharacters, TheFirstIsTheLowestByte) {
    EXPECT_EQ(load_eight("abcdefgh"), 0x6867666564636261U);
    EXPECT_EQ(load_characters<4>("abcdefgh"), 0x64636261U);
    static_assert(load_characters<4>("abcdefgh") == 0x64636261U); // the compiler reads them differently
    EXPECT_EQ(reversed_bytes(0x6867666564636261U), 0x6162636465666768U);
}

TEST(EightCharacters, CapitalsAreFolded) {
    for (int code = 0; code < 256; ++code) {
        const auto character = static_cast<char>(code);
        const std::string text = std::string(3, 'Z') + character + "[@zA";
        const char folded = kvr::lower_case_of(character);
        const std::string expected = std::string(3, 'z') + folded + "[@za";
        EXPECT_EQ(fold_eight(load_eight(text.data())), load_eight(expected.data())) << code;
    }
}

TEST(EightCharacters, EveryCharacterIsClassifiedInEveryPlace) {
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        for (std::size_t at = 0; at < 8; ++at) {
            const eight_classes classes = classes_of_eight(load_eight(sixteen_with(character, at).data()));
            const std::uint64_t bit = std::uint64_t{0x80} << (8 * at);
            EXPECT_EQ(classes.other, is_hexadecimal(character) ? 0 : bit) << code;
            EXPECT_EQ(classes.lower_case, is_lower_case(character) && is_hexadecimal(character) ? bit : 0)
                << code;
        }
    }
}

TEST(EightCharacters, SpellFourBytes) {
    EXPECT_EQ(four_bytes(load_eight("01aBcDfF")), 0x00FF'00CD'00AB'0001U);
    EXPECT_EQ(sum_of_four(four_bytes(load_eight("01aBcDfF"))), 0x01U + 0xABU + 0xCDU + 0xFFU);
}

TEST(EightCharacters, AreWrittenAsTheyWereRead) {
    std::array<char, 8> text{};
    store_eight(load_eight("a\x80 \xFFZ\n\t1"), text.data());
    EXPECT_EQ(std::string(text.data(), 8), "a\x80 \xFFZ\n\t1");
}

TEST(SixteenCharacters, EveryCharacterIsClassifiedInEveryPlace) {
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        for (std::size_t at = 0; at < 16; ++at) {
            const std::string text = sixteen_with(character, at);
            for (const auto& classify : {kvr::classes_of_sixteen, portable::classes_of_sixteen}) {
                const sixteen_classes classes = classify(text.data());
                EXPECT_EQ(classes.other == 0, is_hexadecimal(character)) << code;
                EXPECT_EQ(classes.lower_case != 0, is_lower_case(character) && is_hexadecimal(character))
                    << code;
            }
        }
    }
}

TEST(SixteenCharacters, TheFirstOfThemAreSummedUp) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = mostly_digits(random);
        for (std::size_t count = 0; count <= 16; count += 2) {
            const bool all_digits =
                std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(count), is_hexadecimal);
            unsigned expected = 0;
            for (std::size_t at = 0; all_digits && at < count; at += 2) {
                expected += static_cast<unsigned>(std::stoul(text.substr(at, 2), nullptr, 16));
            }
            for (const auto& sum_up : {kvr::sum_of_sixteen, portable::sum_of_sixteen}) {
                const sixteen_sum sum = sum_up(text.data(), count);
                ASSERT_EQ(sum.other == 0, all_digits) << text << count;
                if (all_digits) {
                    ASSERT_EQ(sum.sum, expected) << text << count;
                }
            }
        }
    }
}

TEST(SixteenCharacters, AreReadAsANumberWhenAllAreDigits) {
    for (std::size_t place = 0; place < 16; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            for (const char filler : {'0', '9', 'f', 'A'}) {
                std::string text(16, filler);
                text[place] = static_cast<char>(byte);
                expect_hex_limb(text);
            }
        }
    }
}

TEST(SixteenCharacters, RandomOnesAreReadEquallyInBothWays) {
    std::mt19937_64 random(42);
    const std::string digits = "0123456789abcdefABCDEF";
    for (int count = 0; count < 100000; ++count) {
        std::string text(16, ' ');
        for (char& character : text) {
            character = random() % 32 != 0 ? digits[random() % digits.size()] : static_cast<char>(random());
        }
        expect_hex_limb(text);
    }
}

} // namespace

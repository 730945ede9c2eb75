#include "kvr/numeric/digit_run.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/sixteen_digits.h"

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

bool is_hexadecimal(char character) {
    return digit_value(character) < 16;
}

bool is_lower(char character) {
    return character >= 'a' && character <= 'f';
}

std::string sixteen_with(char character, std::size_t at) {
    std::string text = "0123456789ABCDEF";
    text[at] = character;
    return text;
}

/// Sixteen characters that are digits for the most part.
std::string mostly_digits(std::mt19937& random) {
    std::string text(16, '0');
    for (char& character : text) {
        character =
            random() % 20 == 0 ? static_cast<char>(random() % 256) : "0123456789ABCDEFabcdef"[random() % 22];
    }
    return text;
}

TEST(EightDigits, EveryCharacterIsClassifiedInEveryPlace) {
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        for (std::size_t at = 0; at < 8; ++at) {
            const eight_classes classes = classes_of_eight(load_eight(sixteen_with(character, at).data()));
            const std::uint64_t bit = std::uint64_t{0x80} << (8 * at);
            EXPECT_EQ(classes.other, is_hexadecimal(character) ? 0 : bit) << code;
            EXPECT_EQ(classes.lower_case, is_lower(character) ? bit : 0) << code;
        }
    }
}

TEST(EightDigits, SpellFourBytes) {
    EXPECT_EQ(four_bytes(load_eight("01aBcDfF")), 0x00FF'00CD'00AB'0001U);
    EXPECT_EQ(sum_of_four(four_bytes(load_eight("01aBcDfF"))), 0x01U + 0xABU + 0xCDU + 0xFFU);
}

TEST(EightDigits, AreWrittenAsTheyWereRead) {
    std::array<char, 8> text{};
    store_eight(load_eight("a\x80 \xFFZ\n\t1"), text.data());
    EXPECT_EQ(std::string(text.data(), 8), "a\x80 \xFFZ\n\t1");
}

TEST(SixteenDigits, EveryCharacterIsClassifiedInEveryPlace) {
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        for (std::size_t at = 0; at < 16; ++at) {
            const std::string text = sixteen_with(character, at);
            for (const auto& classify : {kvr::classes_of_sixteen, portable::classes_of_sixteen}) {
                const sixteen_classes classes = classify(text.data());
                EXPECT_EQ(classes.other == 0, is_hexadecimal(character)) << code;
                EXPECT_EQ(classes.lower_case != 0, is_lower(character)) << code;
            }
        }
    }
}

TEST(SixteenDigits, TheFirstOfThemAreSummedUp) {
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

TEST(DigitRun, EndsAtTheFirstCharacterThatIsNoDigit) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::string text =
            mostly_digits(random) + mostly_digits(random) + mostly_digits(random) + ";.......";
        const auto end = std::find_if_not(text.begin(), text.end(), is_hexadecimal);
        const digit_run run = digits_from(text.data());
        const auto length = static_cast<std::size_t>(end - text.begin());
        ASSERT_EQ(run.end, text.data() + length) << text;
        ASSERT_EQ(run.has_lower_case, std::any_of(text.begin(), end, is_lower)) << text;
        for (std::size_t asked = 0; asked <= 48; ++asked) {
            bool has_lower_case = false;
            ASSERT_EQ(are_digits(text.data(), asked, has_lower_case), asked <= length) << text << asked;
            if (asked <= length) {
                ASSERT_EQ(
                    has_lower_case,
                    std::any_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(asked), is_lower));
            }
        }
    }
}

TEST(DigitRun, IsCopiedInUpperCase) {
    std::array<char, 32> to{};
    copy_digits("0aBcDefFa-1.....", 11, true, to.data());
    EXPECT_EQ(std::string(to.data(), 11), "0ABCDEFFA-1");
    copy_digits("0aBcDefFa-1.....", 11, false, to.data());
    EXPECT_EQ(std::string(to.data(), 11), "0aBcDefFa-1");
}

} // namespace

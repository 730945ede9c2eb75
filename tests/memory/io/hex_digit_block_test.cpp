#include "kvr/memory/io/hex_digit_block.h"
#include "tests/memory/random_numbers.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>

namespace kvr {
namespace {

std::string in_case(std::string text, letter_case letters) {
    for (char& character : text) {
        const int each = static_cast<unsigned char>(character);
        character =
            static_cast<char>(letters == letter_case::lower ? std::tolower(each) : std::toupper(each));
    }
    return text;
}

std::string random_digits(kvr_test::random_numbers& numbers, std::size_t length) {
    std::string text;
    while (text.size() < length) {
        text += "0123456789ABCDEFabcdef"[numbers() % 22];
    }
    return text;
}

TEST(HexDigitBlock, TakesDigitsInEitherCase) {
    kvr_test::random_numbers numbers(1);
    for (std::size_t length = 0; length < 300; ++length) {
        const std::string text = random_digits(numbers, length);
        for (const letter_case letters : {letter_case::lower, letter_case::upper}) {
            hex_digit_block block{};
            ASSERT_TRUE(copy_hex_digits(text, letters, block)) << text;
            ASSERT_EQ(std::string_view(block.digits.data(), length), in_case(text, letters));
        }
    }
}

TEST(HexDigitBlock, TakesAsMuchAsItHasRoomFor) {
    kvr_test::random_numbers numbers(2);
    const std::string text = random_digits(numbers, hex_digit_block::capacity);
    hex_digit_block block{};
    ASSERT_TRUE(copy_hex_digits(text, letter_case::lower, block));
    EXPECT_EQ(std::string_view(block.digits.data(), text.size()), in_case(text, letter_case::lower));
}

TEST(HexDigitBlock, RefusesEveryOtherCharacterWhereverItStands) {
    kvr_test::random_numbers numbers(3);
    for (const std::size_t length : {1U, 2U, 15U, 16U, 17U, 63U, 64U, 100U}) {
        const std::string digits = random_digits(numbers, length);
        for (std::size_t place = 0; place < length; ++place) {
            for (int code = 0; code < 256; ++code) {
                std::string text = digits;
                text[place] = static_cast<char>(code);
                const bool is_digit =
                    std::string_view("0123456789ABCDEFabcdef").find(text[place]) != std::string_view::npos;
                hex_digit_block block{};
                ASSERT_EQ(copy_hex_digits(text, letter_case::lower, block), is_digit)
                    << code << " at " << place;
                ASSERT_EQ(copy_hex_digits(text, letter_case::upper, block), is_digit)
                    << code << " at " << place;
            }
        }
    }
}

TEST(UpperHexDigits, AreDecimalDigitsAndUpperCaseLettersOnly) {
    for (const std::size_t length : {1U, 16U, 33U}) {
        for (std::size_t place = 0; place < length; ++place) {
            for (int code = 0; code < 256; ++code) {
                std::string text(length, 'F');
                text[place] = static_cast<char>(code);
                ASSERT_EQ(are_upper_hex_digits(text),
                          std::string_view("0123456789ABCDEF").find(text[place]) != std::string_view::npos)
                    << code << " at " << place;
            }
        }
    }
    EXPECT_TRUE(are_upper_hex_digits(""));
}

} // namespace
} // namespace kvr

#include "kvrimage/image/hex_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

constexpr std::string_view upper_digits = "0123456789ABCDEF";
constexpr std::string_view lower_digits = "0123456789abcdef";

/// All byte values, starting with @p rotation.
std::string all_bytes(int rotation) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) {
        bytes += static_cast<char>(value + rotation);
    }
    return bytes;
}

std::string spelt(std::string_view bytes, std::string_view digits) {
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) / 16];
        text += digits[static_cast<unsigned char>(byte) % 16];
    }
    return text;
}

TEST(HexText, EveryByteAtEveryPlaceHasItsDigits) {
    for (int rotation = 0; rotation < 16; ++rotation) {
        for (const std::size_t length : {0U, 1U, 3U, 4U, 5U, 7U, 8U, 255U, 256U}) {
            const std::string bytes = all_bytes(rotation).substr(0, length);
            std::string digits(2 * length + 1, '#');
            encode_hex(bytes, digits.data());
            EXPECT_EQ(digits, spelt(bytes, upper_digits) + "#");
        }
    }
}

TEST(HexText, DigitsOfEitherCaseBecomeBytesAtEveryPlace) {
    for (int rotation = 0; rotation < 16; ++rotation) {
        for (const std::size_t length : {0U, 1U, 7U, 8U, 9U, 15U, 16U, 255U, 256U}) {
            const std::string bytes = all_bytes(rotation).substr(0, length);
            for (const std::string_view digits : {upper_digits, lower_digits}) {
                std::string decoded(length + 1, '#');
                EXPECT_TRUE(decode_hex(spelt(bytes, digits), decoded.data()));
                EXPECT_EQ(decoded, bytes + "#");
            }
        }
    }
}

TEST(HexText, UpToEightDigitsAreANumber) {
    EXPECT_EQ(hex_value(""), 0U);
    EXPECT_EQ(hex_value("0a"), 10U);
    EXPECT_EQ(hex_value("1F"), 31U);
    EXPECT_EQ(hex_value("89aBCdEf"), 0x89ABCDEFU);
}

TEST(HexText, ACharacterThatIsNoDigitIsFoundAtEveryPlace) {
    for (std::size_t place = 0; place < 36; ++place) {
        for (int character = 0; character < 256; ++character) {
            std::string digits(36, '7');
            digits[place] = static_cast<char>(character);
            std::string bytes(18, '\0');
            const bool is_digit = upper_digits.find(digits[place]) != std::string_view::npos ||
                                  lower_digits.find(digits[place]) != std::string_view::npos;
            EXPECT_EQ(decode_hex(digits, bytes.data()), is_digit) << place << " " << character;
        }
    }
}

TEST(HexText, TheSumOfWhatIsCodedIsThatOfAllBytes) {
    for (std::size_t length = 0; length <= 70; ++length) {
        const std::string bytes = all_bytes(200).substr(0, length);
        std::string digits(2 * length, '#');
        EXPECT_EQ(encode_hex(bytes, digits.data()), sum_of_bytes(bytes));
        std::string decoded(length, '#');
        const decoded_hex result = decode_and_sum(digits, decoded.data());
        EXPECT_TRUE(result.are_digits);
        EXPECT_EQ(result.sum, sum_of_bytes(bytes));
    }
}

TEST(HexText, TheSumIsThatOfAllBytes) {
    for (std::size_t length = 0; length <= 70; ++length) {
        const std::string bytes = all_bytes(200).substr(0, length);
        unsigned sum = 0;
        for (const char byte : bytes) {
            sum += static_cast<unsigned char>(byte);
        }
        EXPECT_EQ(sum_of_bytes(bytes), sum);
    }
    EXPECT_EQ(sum_of_bytes(std::string(256, '\xFF')), 65280U);
}

} // namespace

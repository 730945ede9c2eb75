#include "kvr/numeric/digit_blocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

std::string eight_digits(std::uint64_t value) {
    std::string text = std::to_string(value);
    return text.insert(0, kvr::block_digits - text.size(), '0');
}

std::string text_of(std::uint64_t block) {
    std::string text(kvr::block_digits, ' ');
    kvr::store_block(text.data(), block);
    return text;
}

/// What each way of reading a limb must answer.
void expect_hex_limb(const std::string& text) {
    const bool is_valid = text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    std::uint64_t limb = 0;
    ASSERT_EQ(kvr::read_hex_limb_by_words(text.data(), limb), is_valid) << testing::PrintToString(text);
    if (is_valid) {
        ASSERT_EQ(limb, std::stoull(text, nullptr, 16));
    }
#if defined(__SSE2__)
    ASSERT_EQ(kvr::read_hex_limb_by_vector(text.data(), limb), is_valid) << testing::PrintToString(text);
    if (is_valid) {
        ASSERT_EQ(limb, std::stoull(text, nullptr, 16));
    }
#endif
}

} // namespace

TEST(DigitBlocks, FirstCharacterIsTheLowestByte) {
    EXPECT_EQ(kvr::load_block("abcdefgh"), 0x6867666564636261U);
    EXPECT_EQ(text_of(0x6867666564636261U), "abcdefgh");
    EXPECT_EQ(kvr::reversed_bytes(0x6867666564636261U), 0x6162636465666768U);
}

TEST(DigitBlocks, EightDecimalDigitsAreReadAndWritten) {
    std::mt19937_64 random(41);
    for (int count = 0; count < 200000; ++count) {
        const std::uint64_t value = count < 20000 ? static_cast<std::uint64_t>(count) : random() % 100000000;
        std::string digits = eight_digits(value);
        ASSERT_EQ(kvr::decimal_block_value(kvr::load_block(digits.data())), value);
        std::ranges::reverse(digits);
        ASSERT_EQ(text_of(kvr::reversed_decimal_block(value)), digits);
    }
}

TEST(DigitBlocks, EveryByteInEveryPlaceIsClassified) {
    for (std::size_t place = 0; place < 16; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            for (const char filler : {'0', '9', 'f', 'A'}) {
                std::string text(16, filler);
                text[place] = static_cast<char>(byte);
                expect_hex_limb(text);
                const bool is_decimal = text.find_first_not_of("0123456789") == std::string::npos;
                ASSERT_EQ(kvr::are_decimal_digits(text), is_decimal) << place << " " << byte;
            }
        }
    }
}

TEST(DigitBlocks, RandomBytesAreReadAlikeInBothWays) {
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

TEST(DigitBlocks, LimbIsWrittenInUpperCase) {
    std::string text(18, '-');
    kvr::write_hex_limb(text.data() + 1, 0x0123456789ABCDEFU);
    EXPECT_EQ(text, "-0123456789ABCDEF-");
}

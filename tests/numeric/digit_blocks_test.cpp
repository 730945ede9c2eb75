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
    kvr::store_eight(block, text.data());
    return text;
}

} // namespace

TEST(DigitBlocks, EightDecimalDigitsAreReadAndWritten) {
    std::mt19937_64 random(41);
    for (int count = 0; count < 200000; ++count) {
        const std::uint64_t value = count < 20000 ? static_cast<std::uint64_t>(count) : random() % 100000000;
        std::string digits = eight_digits(value);
        ASSERT_EQ(kvr::decimal_block_value(kvr::load_eight(digits.data())), value);
        std::ranges::reverse(digits);
        ASSERT_EQ(text_of(kvr::reversed_decimal_block(value)), digits);
    }
}

TEST(DigitBlocks, EveryByteInEveryPlaceIsClassified) {
    for (std::size_t place = 0; place < 16; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text(16, '9');
            text[place] = static_cast<char>(byte);
            const bool is_decimal = text.find_first_not_of("0123456789") == std::string::npos;
            ASSERT_EQ(kvr::are_decimal_digits(text), is_decimal) << place << " " << byte;
        }
    }
}

TEST(DigitBlocks, LimbIsWrittenInUpperCase) {
    std::string text(18, '-');
    kvr::write_hex_limb(text.data() + 1, 0x0123456789ABCDEFU);
    EXPECT_EQ(text, "-0123456789ABCDEF-");
}

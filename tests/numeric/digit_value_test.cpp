#include "kvr/numeric/digit_value.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>

TEST(DigitValue, EveryByteHasItsValue) {
    for (int byte = 0; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        const std::string text(1, character);
        int expected = kvr::no_digit;
        if (text.find_first_of("0123456789abcdefABCDEF") == 0) {
            expected = static_cast<int>(std::strtol(text.c_str(), nullptr, 16));
        } else if (text == "X" || text == "x") {
            expected = kvr::dont_care_digit;
        }
        EXPECT_EQ(kvr::digit_value(character), expected) << byte;
        EXPECT_EQ(kvr::is_decimal_digit(character), expected < 10) << byte;
    }
}

TEST(DigitValue, OnlyRadixesOfWholeBitsHaveBitsPerDigit) {
    EXPECT_EQ(kvr::bits_per_digit(RADIX_BIN), 1U);
    EXPECT_EQ(kvr::bits_per_digit(RADIX_HEX), 4U);
    EXPECT_EQ(kvr::bits_per_digit(RADIX_OCT), 3U);
    for (const KVR_MEMORY_RADIXES radix : {RADIX_DEC, RADIX_UNS, RADIX_FIXED_POINT, RADIX_NONE}) {
        EXPECT_EQ(kvr::bits_per_digit(radix), 0U) << radix;
    }
}

TEST(DigitValue, DigitCountRoundsUp) {
    EXPECT_EQ(kvr::digit_count(0, 4), 0U);
    EXPECT_EQ(kvr::digit_count(1, 4), 1U);
    EXPECT_EQ(kvr::digit_count(4, 4), 1U);
    EXPECT_EQ(kvr::digit_count(5, 4), 2U);
    EXPECT_EQ(kvr::digit_count(7, 3), 3U);
}

TEST(DigitValue, BitCountThatIsTooLargeIsRefused) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max() / 4;
    EXPECT_EQ(kvr::bit_count(7, 3), 21U);
    EXPECT_EQ(kvr::bit_count(most, 4), 4 * most);
    EXPECT_THROW(kvr::bit_count(most + 1, 4), std::length_error);
    EXPECT_THROW(kvr::bit_count(most + 1, 1), std::length_error);
}

// Numbers that lose limbs by an inversion.

#include "kvr/numeric/magnitude.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

/// The number with @p ones low bits set, inverted in its @p width lowest bits.
kvr::magnitude inverted(std::size_t ones, std::size_t width) {
    kvr::magnitude number = kvr::magnitude::of_digits(std::string(ones, '1'), 1);
    number.invert_low_bits(width);
    return number;
}

TEST(MagnitudeInverted, IsZeroWhenAllBitsWereSet) {
    for (const std::size_t width : {1U, 63U, 64U, 65U, 128U, 192U, 1280U, 1344U}) {
        const kvr::magnitude number = inverted(width, width);
        EXPECT_EQ(number.bit_length(), 0U) << width;
        std::string text;
        number.append_decimal(text);
        EXPECT_EQ(text, "0") << width;
    }
}

TEST(MagnitudeInverted, HasTheLengthOfItsHighestBit) {
    for (const std::size_t width : {65U, 128U, 192U, 1344U}) {
        for (const std::size_t ones : {std::size_t{0}, std::size_t{1}, width - 64, width - 1}) {
            const kvr::magnitude number = inverted(ones, width);
            EXPECT_EQ(number.bit_length(), width) << ones;
            EXPECT_EQ(number.bit(0), ones == 0);
        }
    }
}

TEST(MagnitudeInverted, TwiceIsTheNumberAgain) {
    kvr::magnitude number = kvr::magnitude::of_digits("FFFFFFFFFFFFFFFF0123456789ABCDEF", 4);
    number.invert_low_bits(128);
    EXPECT_EQ(number.bit_length(), 64U);
    number.invert_low_bits(128);
    std::string text;
    number.append_digits(text, 4, 32);
    EXPECT_EQ(text, "FFFFFFFFFFFFFFFF0123456789ABCDEF");
}

} // namespace

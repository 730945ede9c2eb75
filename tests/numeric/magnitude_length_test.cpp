// The length of a number with leading zeros, and of a number that is cut to more bits than it has.

#include "kvr/numeric/magnitude.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>

namespace {

using kvr::magnitude;

TEST(MagnitudeLength, DoesNotCountLeadingZeros) {
    for (const std::size_t zeros : {1U, 15U, 16U, 17U, 32U, 400U}) {
        const std::string text(zeros, '0');
        EXPECT_EQ(magnitude::of_digits(text, 4).bit_length(), 0U) << zeros;
        EXPECT_EQ(magnitude::of_digits(text + "0123456789ABCDEF", 4).bit_length(), 57U) << zeros;
        EXPECT_EQ(magnitude::of_digits(text + "8", 4).bit_length(), 4U) << zeros;
        EXPECT_EQ(magnitude::of_digits(text + "7", 3).bit_length(), 3U) << zeros;
        EXPECT_EQ(magnitude::of_digits(text + "1", 1).bit_length(), 1U) << zeros;
        EXPECT_EQ(magnitude::of_decimal(text + "9").bit_length(), 4U) << zeros;
    }
}

TEST(MagnitudeLength, StaysWhenMoreBitsAreKept) {
    magnitude number = magnitude::of_digits("FFFFFFFFFFFFFFFFF", 4);
    for (const std::size_t count :
         {std::size_t{68}, std::size_t{69}, std::numeric_limits<std::size_t>::max()}) {
        number.keep_low_bits(count);
        EXPECT_EQ(number.bit_length(), 68U);
    }
}

TEST(MagnitudeLength, IsWhatIsKept) {
    for (const std::size_t count : {0U, 1U, 63U, 64U, 65U, 67U}) {
        magnitude number = magnitude::of_digits("FFFFFFFFFFFFFFFFF", 4);
        number.keep_low_bits(count);
        EXPECT_EQ(number.bit_length(), count);
    }
    magnitude number = magnitude::of_digits("80000000000000001", 4);
    number.keep_low_bits(67);
    EXPECT_EQ(number.bit_length(), 1U);
}

} // namespace

#include "kvr/numeric/integer_format.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

std::string itoa_text(int value, int radix) {
    std::array<char, 33> buffer;
    buffer.fill('#');
    kvr_itoa(value, buffer.data(), radix);
    return buffer.data();
}

std::string ultoa_text(unsigned int value, int radix) {
    std::array<char, 33> buffer;
    buffer.fill('#');
    kvr_ultoa(value, buffer.data(), radix);
    return buffer.data();
}

} // namespace

TEST(Itoa, RadixTenHasASign) {
    EXPECT_EQ(itoa_text(-255, 10), "-255");
    EXPECT_EQ(itoa_text(255, 10), "255");
}

TEST(Itoa, OtherRadixesShowThePattern) {
    EXPECT_EQ(itoa_text(-255, 16), "ffffff01");
    EXPECT_EQ(itoa_text(-1, 16), "ffffffff");
    EXPECT_EQ(itoa_text(-1, 2), std::string(32, '1'));
}

TEST(Itoa, ZeroHasOneDigit) {
    EXPECT_EQ(itoa_text(0, 2), "0");
    EXPECT_EQ(itoa_text(0, 10), "0");
}

TEST(Itoa, RadixThirtySixReachesZ) {
    EXPECT_EQ(itoa_text(35, 36), "z");
    EXPECT_EQ(itoa_text(36, 36), "10");
}

TEST(Itoa, LowestIntegerKeepsItsFullMagnitude) {
    EXPECT_EQ(itoa_text(lowest, 10), "-2147483648");
    EXPECT_EQ(itoa_text(highest, 10), "2147483647");
}

TEST(Itoa, RadixAboveThirtySixRunsPastZ) {
    EXPECT_EQ(itoa_text(36, 37), "{");
}

TEST(Itoa, RadixThatCanWriteNothingGivesZero) {
    EXPECT_EQ(itoa_text(5, 0), "0");
    EXPECT_EQ(itoa_text(5, 1), "0");
    EXPECT_EQ(ultoa_text(5, 1), "0");
}

TEST(Ultoa, NoRadixHasASign) {
    EXPECT_EQ(ultoa_text(4294967295U, 10), "4294967295");
    EXPECT_EQ(ultoa_text(4294967041U, 16), "ffffff01");
    EXPECT_EQ(ultoa_text(0, 8), "0");
}

TEST(Ultoa, EveryRadixReadsBack) {
    for (int radix = 2; radix <= 36; ++radix) {
        for (const unsigned int value : {1U, 35U, 36U, 12345U, 2147483648U, 4294967295U}) {
            const std::string text = ultoa_text(value, radix);
            EXPECT_EQ(std::strtoul(text.c_str(), nullptr, radix), value) << text << " in " << radix;
            EXPECT_EQ(kvr_long_to_string(value, radix), text);
        }
    }
}

TEST(LongToString, LettersAreLowerCase) {
    EXPECT_EQ(kvr_long_to_string(255, 16), "ff");
}

TEST(LongToString, RadixTwoGivesAllThirtyTwoDigits) {
    EXPECT_EQ(kvr_long_to_string(0x80000001U, 2), "10000000000000000000000000000001");
}

TEST(IntToString, NegativeNumberHasASign) {
    EXPECT_EQ(kvr_int_to_string(-7), "-7");
    EXPECT_EQ(kvr_int_to_string(0), "0");
    EXPECT_EQ(kvr_int_to_string(lowest), "-2147483648");
    EXPECT_EQ(kvr_int_to_string(highest), "2147483647");
}

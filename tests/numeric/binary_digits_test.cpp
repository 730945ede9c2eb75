#include "kvr/numeric/binary_digits.h"
#include "tests/numeric/literal_radix_conversion.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <stdexcept>
#include <string>

TEST(IntToBinaryString, MinusOneHasNoDigits) {
    for (const int width : {-1, 0, 4, 32}) {
        EXPECT_EQ(kvr::int_to_binary_string(-1, width), "") << width;
    }
}

TEST(IntToBinaryString, WidthZeroCountsAsOne) {
    EXPECT_EQ(kvr::int_to_binary_string(5, 0), "1");
    EXPECT_EQ(kvr::int_to_binary_string(4, 0), "0");
}

TEST(IntToBinaryString, NegativeWidthHasNoDigits) {
    EXPECT_EQ(kvr::int_to_binary_string(5, -1), "");
}

TEST(IntToBinaryString, WidthCutsAndFills) {
    EXPECT_EQ(kvr::int_to_binary_string(5, 2), "01");
    EXPECT_EQ(kvr::int_to_binary_string(5, 6), "000101");
    EXPECT_EQ(kvr::int_to_binary_string(0, 3), "000");
}

TEST(IntToBinaryString, NegativeValueShowsItsAbsoluteValue) {
    EXPECT_EQ(kvr::int_to_binary_string(-5, 4), "0101");
    EXPECT_EQ(kvr::int_to_binary_string(std::numeric_limits<int>::min(), 33), "01" + std::string(31, '0'));
}

TEST(IntToBinaryString, EveryValueAndWidthIsThatOfTheLiteralSteps) {
    for (int value = -300; value <= 300; ++value) {
        for (int width = -1; width <= 12; ++width) {
            ASSERT_EQ(kvr::int_to_binary_string(value, width),
                      literal_radix_conversion::int_to_binary(value, width));
        }
    }
}

TEST(InvertBinaryString, EverythingButOneBecomesOne) {
    std::string bits = "10Xx2";
    kvr::invert_binary_string(bits);
    EXPECT_EQ(bits, "01111");
}

TEST(DecimalToBinaryString, UnsignedIsTheShortestForm) {
    EXPECT_EQ(kvr::decimal_to_binary_string("12", false), "1100");
    EXPECT_EQ(kvr::decimal_to_binary_string("0", false), "0");
    EXPECT_EQ(kvr::decimal_to_binary_string("0012", false), "1100");
}

TEST(DecimalToBinaryString, SignedIsOnesComplementWithASignBit) {
    EXPECT_EQ(kvr::decimal_to_binary_string("5", true), "0101");
    EXPECT_EQ(kvr::decimal_to_binary_string("-5", true), "1010");
    EXPECT_EQ(kvr::decimal_to_binary_string("0", true), "00");
    EXPECT_EQ(kvr::decimal_to_binary_string("-0", true), "11");
}

TEST(DecimalToBinaryString, TextWithoutDigitsIsZero) {
    EXPECT_EQ(kvr::decimal_to_binary_string("", false), "0");
    EXPECT_EQ(kvr::decimal_to_binary_string("-", true), "11");
}

TEST(DecimalToBinaryString, EmptySignedTextIsOutOfRange) {
    EXPECT_THROW(kvr::decimal_to_binary_string("", true), std::out_of_range);
}

TEST(DecimalToBinaryString, CodesOfLettersCount) {
    // "A" is 17 above "0" and "-" is 3 below it; a negative odd digit carries ten.
    EXPECT_EQ(kvr::decimal_to_binary_string("A", false), "10001");
    EXPECT_EQ(kvr::decimal_to_binary_string("1A", false), "11011");
    EXPECT_EQ(kvr::decimal_to_binary_string("-", false), "1");
    EXPECT_EQ(kvr::decimal_to_binary_string("-1", false), "11111");
}

TEST(DecimalToBinaryString, CharactersFrom128OnAreNegativeDigits) {
    // 0x80 is 176 below "0" and even, 0xFF is 49 below it and odd. One halving later, no digit exceeds zero.
    EXPECT_EQ(kvr::decimal_to_binary_string("\x80", false), "0");
    EXPECT_EQ(kvr::decimal_to_binary_string("\xFF", false), "1");
}

TEST(DecimalToBinaryString, TwoBytesOfAnyKindFollowTheLiteralSteps) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string text = {static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(kvr::decimal_to_binary_string(text, false),
                      literal_radix_conversion::decimal_to_binary(text, false))
                << first << " " << second;
        }
    }
}

TEST(DecimalToBinaryString, RandomBytesFollowTheLiteralSteps) {
    std::mt19937_64 random(11);
    for (int count = 0; count < 2000; ++count) {
        std::string text(1 + random() % 40, '0');
        const bool has_few_odd_bytes = random() % 2 == 0;
        for (char& character : text) {
            const bool is_digit = has_few_odd_bytes && random() % 8 != 0;
            character = is_digit ? static_cast<char>('0' + random() % 10) : static_cast<char>(random());
        }
        for (const bool is_signed : {false, true}) {
            ASSERT_EQ(kvr::decimal_to_binary_string(text, is_signed),
                      literal_radix_conversion::decimal_to_binary(text, is_signed))
                << testing::PrintToString(text);
        }
    }
}

TEST(DecimalToBinaryString, LongTextOfOddCharactersEndsSoon) {
    const std::string text(10000, '\x81');
    EXPECT_EQ(kvr::decimal_to_binary_string(text + "1", false).back(), '1');
    EXPECT_GT(kvr::decimal_to_binary_string(std::string(10000, '~'), false).size(), 33000U);
}

TEST(BinaryToDecimalString, DigitsComeOutReversed) {
    EXPECT_EQ(kvr::binary_to_decimal_string("1100", false), "21");
    EXPECT_EQ(kvr::binary_to_decimal_string("1001", false), "9");
    EXPECT_EQ(kvr::binary_to_decimal_string("11111111", false), "552");
    EXPECT_EQ(kvr::binary_to_decimal_string("1100100", false), "001");
    EXPECT_EQ(kvr::binary_to_decimal_string("", false), "0");
}

TEST(BinaryToDecimalString, SignedReadsOnesComplement) {
    EXPECT_EQ(kvr::binary_to_decimal_string("11111111", true), "-0");
    EXPECT_EQ(kvr::binary_to_decimal_string("10", true), "-1");
    EXPECT_EQ(kvr::binary_to_decimal_string("1", true), "-0");
    EXPECT_EQ(kvr::binary_to_decimal_string("0111", true), "7");
    EXPECT_EQ(kvr::binary_to_decimal_string("10011", true), "-21");
}

TEST(BinaryToDecimalString, EverythingButOneIsAZeroBit) {
    EXPECT_EQ(kvr::binary_to_decimal_string("1X2x1", false), "71");
    EXPECT_EQ(kvr::binary_to_decimal_string("X1", true), "1");
}

TEST(BinaryToDecimalString, InversionTurnsDontCaresOfANegativeNumberIntoOnes) {
    EXPECT_EQ(kvr::binary_to_decimal_string("1X0", true), "-3");
}

TEST(BinaryToDecimalString, EmptySignedDigitsAreOutOfRange) {
    EXPECT_THROW(kvr::binary_to_decimal_string("", true), std::out_of_range);
}

TEST(BinaryToGroupedRadixString, GroupsCountFromTheRight) {
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("101", 4), "5");
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("0000101", 4), "05");
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("11111", 4), "1F");
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("1111", 3), "17");
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("", 4), "");
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("", 3), "");
}

TEST(BinaryToGroupedRadixString, OneDontCareBitMarksItsDigit) {
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("XXXX0101", 4), "X5");
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("1x110101", 4), "X5");
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("10X", 3), "X");
}

TEST(BinaryToGroupedRadixString, OtherCharactersAddNothing) {
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("1U21", 4), "9");
}

TEST(BinaryToGroupedRadixString, AnyOtherGroupSizeIsOctal) {
    EXPECT_EQ(kvr::binary_to_grouped_radix_string("1111", 0), "17");
}

TEST(GroupedRadixToBinaryString, InvalidDigitsAreZero) {
    EXPECT_EQ(kvr::grouped_radix_to_binary_string("79", 3), "111000");
    EXPECT_EQ(kvr::grouped_radix_to_binary_string("1G", 4), "00010000");
    EXPECT_EQ(kvr::grouped_radix_to_binary_string("A", 3), "000");
}

TEST(GroupedRadixToBinaryString, DontCareDigitFillsItsGroup) {
    EXPECT_EQ(kvr::grouped_radix_to_binary_string("x5", 4), "XXXX0101");
    EXPECT_EQ(kvr::grouped_radix_to_binary_string("X5", 3), "XXX101");
}

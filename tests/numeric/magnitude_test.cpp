#include "kvr/numeric/magnitude.h"
#include "tests/numeric/random_digits.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using kvr::magnitude;
using kvr_test::random_digits;

std::string decimal_text(const magnitude& number) {
    std::string text;
    number.append_decimal(text);
    return text;
}

std::string digit_text(const magnitude& number, unsigned bits_per_digit, std::size_t count) {
    std::string text;
    number.append_digits(text, bits_per_digit, count);
    return text;
}

/// Twice a decimal number, computed digit by digit.
std::string doubled(const std::string& digits) {
    std::string result = "0" + digits;
    int carry = 0;
    for (auto digit = result.rbegin(); digit != result.rend(); ++digit) {
        const int sum = (*digit - '0') * 2 + carry;
        *digit = static_cast<char>('0' + sum % 10);
        carry = sum / 10;
    }
    return result.front() == '0' ? result.substr(1) : result;
}

} // namespace

TEST(Magnitude, NoDigitsAreZero) {
    EXPECT_EQ(decimal_text(magnitude::of_decimal("")), "0");
    EXPECT_EQ(decimal_text(magnitude::of_digits("", 4)), "0");
    EXPECT_EQ(magnitude().bit_length(), 0U);
    EXPECT_EQ(digit_text(magnitude(), 4, 3), "000");
    EXPECT_EQ(digit_text(magnitude(), 1, 0), "");
}

TEST(Magnitude, LeadingZerosDoNotCount) {
    EXPECT_EQ(decimal_text(magnitude::of_decimal(std::string(100, '0') + "42")), "42");
    EXPECT_EQ(magnitude::of_digits(std::string(100, '0') + "2A", 4).bit_length(), 6U);
}

TEST(Magnitude, EveryPowerOfTwoIsExactInBothDirections) {
    std::string digits = "1";
    for (std::size_t exponent = 0; exponent <= 1500; ++exponent) {
        const std::string bits = "1" + std::string(exponent, '0');
        ASSERT_EQ(decimal_text(magnitude::of_digits(bits, 1)), digits) << exponent;
        ASSERT_EQ(digit_text(magnitude::of_decimal(digits), 1, exponent + 1), bits) << exponent;
        digits = doubled(digits);
    }
}

TEST(Magnitude, NumbersAroundPowersOfTenAreExact) {
    for (std::size_t exponent = 1; exponent <= 500; ++exponent) {
        const std::string power = "1" + std::string(exponent, '0');
        ASSERT_EQ(decimal_text(magnitude::of_decimal(power)), power);
        ASSERT_EQ(decimal_text(magnitude::of_decimal(std::string(exponent, '9'))),
                  std::string(exponent, '9'));
        magnitude number = magnitude::of_decimal(power);
        number.decrement();
        ASSERT_EQ(decimal_text(number), std::string(exponent, '9'));
        number.increment();
        ASSERT_EQ(decimal_text(number), power);
    }
}

TEST(Magnitude, LongRandomDecimalsComeBackThroughBinary) {
    std::mt19937_64 random(7);
    for (const std::size_t length : {19U, 20U, 38U, 39U, 300U, 308U, 386U, 1000U, 5000U}) {
        const std::string digits = "9" + random_digits(random, length - 1, "0123456789");
        const magnitude number = magnitude::of_decimal(digits);
        const std::string bits = digit_text(number, 1, number.bit_length());
        EXPECT_EQ(bits.front(), '1');
        EXPECT_EQ(decimal_text(magnitude::of_digits(bits, 1)), digits);
    }
}

TEST(Magnitude, DigitsOfEveryLengthComeBack) {
    std::mt19937_64 random(8);
    for (std::size_t length = 1; length <= 400; ++length) {
        const std::string hexadecimal = random_digits(random, length, "0123456789ABCDEF");
        const std::string octal = random_digits(random, length, "01234567");
        const std::string binary = random_digits(random, length, "01");
        ASSERT_EQ(digit_text(magnitude::of_digits(hexadecimal, 4), 4, length), hexadecimal);
        ASSERT_EQ(digit_text(magnitude::of_digits(octal, 3), 3, length), octal);
        ASSERT_EQ(digit_text(magnitude::of_digits(binary, 1), 1, length), binary);
    }
}

TEST(Magnitude, OctalDigitsThatStraddleLimbsKeepTheirBits) {
    const magnitude number = magnitude::of_digits("1" + std::string(64, '7'), 3);
    EXPECT_EQ(number.bit_length(), 193U);
    EXPECT_EQ(digit_text(number, 1, 193), std::string(193, '1'));
    EXPECT_EQ(digit_text(number, 3, 22), std::string(22, '7'));
}

TEST(Magnitude, DigitsBeforeTheTextDoNotCount) {
    const std::string digits(64, 'F');
    for (std::size_t count = 0; count <= 40; ++count) {
        const std::string_view last = std::string_view(digits).substr(digits.size() - count);
        EXPECT_EQ(magnitude::of_digits(last, 4).bit_length(), 4 * count);
    }
}

TEST(Magnitude, CharactersThatAreNoDigitsCountAsZero) {
    EXPECT_EQ(decimal_text(magnitude::of_digits("1G1X1", 4)), "65793");
    EXPECT_EQ(decimal_text(magnitude::of_digits("1891", 3)), "513");
    EXPECT_EQ(decimal_text(magnitude::of_digits("12x1", 1)), "9");
}

TEST(Magnitude, LowerCaseDigitsCount) {
    EXPECT_EQ(decimal_text(magnitude::of_digits("ff", 4)), "255");
}

TEST(Magnitude, FewerDigitsThanTheNumberHasAreItsLowestOnes) {
    EXPECT_EQ(digit_text(magnitude::of_digits("ABC", 4), 4, 2), "BC");
    EXPECT_EQ(digit_text(magnitude::of_digits("ABC", 4), 1, 3), "100");
}

TEST(Magnitude, BitsAreReadByWeight) {
    const magnitude number = magnitude::of_digits("1" + std::string(30, '0') + "2", 4);
    EXPECT_TRUE(number.bit(1));
    EXPECT_FALSE(number.bit(0));
    EXPECT_TRUE(number.bit(124));
    EXPECT_FALSE(number.bit(125));
    EXPECT_FALSE(number.bit(100000));
}

TEST(Magnitude, KeepingLowBitsDropsTheOthers) {
    for (std::size_t count = 0; count <= 300; ++count) {
        magnitude number = magnitude::of_digits(std::string(280, '1'), 1);
        number.keep_low_bits(count);
        ASSERT_EQ(number.bit_length(), std::min<std::size_t>(count, 280));
    }
    magnitude number = magnitude::of_digits("1" + std::string(200, '0') + "1", 1);
    number.keep_low_bits(150);
    EXPECT_EQ(decimal_text(number), "1");
}

TEST(Magnitude, InversionFlipsEveryBitOfTheWidth) {
    std::mt19937_64 random(9);
    for (std::size_t width = 1; width <= 1400; width += 13) {
        const std::string bits = random_digits(random, width, "01");
        std::string expected = bits;
        for (char& bit : expected) {
            bit = bit == '0' ? '1' : '0';
        }
        magnitude number = magnitude::of_digits(bits, 1);
        number.invert_low_bits(width);
        ASSERT_EQ(digit_text(number, 1, width), expected);
    }
}

TEST(Magnitude, IncrementCarriesThroughAllLimbs) {
    for (const std::size_t width : {0U, 1U, 63U, 64U, 128U, 1280U, 1344U}) {
        magnitude number = magnitude::of_digits(std::string(width, '1'), 1);
        number.increment();
        EXPECT_EQ(digit_text(number, 1, width + 1), "1" + std::string(width, '0'));
        number.decrement();
        EXPECT_EQ(number.bit_length(), width);
        EXPECT_EQ(digit_text(number, 1, width), std::string(width, '1'));
    }
}

TEST(Magnitude, TextIsAppended) {
    std::string text = "-";
    magnitude::of_decimal("18446744073709551616").append_decimal(text);
    text += ' ';
    magnitude::of_decimal("255").append_digits(text, 4, 4);
    EXPECT_EQ(text, "-18446744073709551616 00FF");
}

TEST(LimbBuffer, GrowingPastTheInlineLimbsKeepsThem) {
    kvr::limb_buffer buffer(2);
    buffer.limbs()[0] = 7;
    buffer.limbs()[1] = 9;
    buffer.resize(100);
    EXPECT_EQ(buffer.limbs()[0], 7U);
    EXPECT_EQ(buffer.limbs()[1], 9U);
    EXPECT_EQ(buffer.limbs()[2], 0U);
    EXPECT_EQ(buffer.limbs()[99], 0U);
}

TEST(LimbBuffer, LimbsThatComeBackAreZero) {
    for (const std::size_t size : {3U, 100U}) {
        kvr::limb_buffer buffer(size);
        buffer.limbs()[size - 1] = 5;
        buffer.limbs()[0] = 5;
        buffer.resize(0);
        EXPECT_EQ(buffer.size(), 0U);
        buffer.resize(size);
        EXPECT_EQ(buffer.limbs()[size - 1], 0U);
        EXPECT_EQ(buffer.limbs()[0], 0U);
    }
}

TEST(LimbBuffer, CopyIsIndependent) {
    for (const std::size_t size : {3U, 100U}) {
        kvr::limb_buffer buffer(size);
        kvr::limb_buffer copy = buffer;
        copy.limbs()[0] = 5;
        EXPECT_EQ(buffer.limbs()[0], 0U);
        EXPECT_EQ(copy.limbs()[0], 5U);
    }
}

#include "kvrimage/image/fixed_point.h"
#include "kvrimage/image/word.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>

namespace {

using namespace kvrimage;

/// The word in hexadecimal, or the reason why there is none.
std::string fixed_word(std::string_view text, const fixed_point& format, rounding how = rounding::nearest,
                       bool saturate = false) {
    std::string word;
    const auto fault = make_fixed_point(text, format, how, saturate, word);
    if (fault) {
        return *fault == fixed_point_fault::syntax ? "syntax" : "out of range";
    }
    return word;
}

TEST(FixedPoint, ReadsItsName) {
    const auto format = fixed_point_of_name("fixed:2.14");
    ASSERT_TRUE(format);
    EXPECT_EQ(format->integer_bits, 2U);
    EXPECT_EQ(format->fraction_bits, 14U);
    EXPECT_EQ(fixed_point_of_name("fixed:1.0")->bits(), 1U);
    EXPECT_EQ(fixed_point_of_name("fixed:1.1048575")->bits(), widest_word);
    for (const char* name :
         {"fixed:", "fixed:1", "fixed:1.", "fixed:.1", "fixed:0.8", "fixed:1.8x", "fixed:1x8",
          "fixed:1.1048576", "fixed:12345678.1", "fixed:1.12345678", "dec", ""}) {
        EXPECT_FALSE(fixed_point_of_name(name)) << name;
    }
}

TEST(FixedPoint, BecomesAWord) {
    EXPECT_EQ(parse_fixed_point("-0.5", {1, 15}).value, word::of(0xC000, 16));
    EXPECT_EQ(parse_fixed_point("9", {1, 15}, rounding::nearest, true).value, word::of(0x7FFF, 16));
    const fixed_point_result refused = parse_fixed_point("1", {1, 15});
    EXPECT_FALSE(refused.value);
    EXPECT_EQ(refused.fault, fixed_point_fault::out_of_range);
    EXPECT_EQ(parse_fixed_point("one", {1, 15}).fault, fixed_point_fault::syntax);
}

TEST(FixedPoint, WithoutIntegerBitOrWithTooManyBitsIsRefused) {
    EXPECT_THROW(static_cast<void>(parse_fixed_point("0", {0, 8})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(parse_fixed_point("0", {1, widest_word})), std::invalid_argument);
}

TEST(FixedPoint, TakesWholeNumbersAndFractions) {
    EXPECT_EQ(fixed_word("1.5", {4, 4}), "18");
    EXPECT_EQ(fixed_word("-1.5", {4, 4}), "E8");
    EXPECT_EQ(fixed_word("+.25", {4, 4}), "04");
    EXPECT_EQ(fixed_word("3.", {4, 4}), "30");
    EXPECT_EQ(fixed_word("007.000", {4, 4}), "70");
    EXPECT_EQ(fixed_word("0", {1, 0}), "0");
    EXPECT_EQ(fixed_word("-0.0", {4, 4}), "00");
    EXPECT_EQ(fixed_word("-1", {1, 0}), "1");
}

TEST(FixedPoint, TakesExponents) {
    EXPECT_EQ(fixed_word("25e-2", {4, 4}), "04");
    EXPECT_EQ(fixed_word("0.003E+3", {4, 4}), "30");
    EXPECT_EQ(fixed_word("1e0", {4, 4}), "10");
    EXPECT_EQ(fixed_word("5e20", {80, 2}), "0006C6B935B8BBD400000");
}

TEST(FixedPoint, OtherTextIsNoNumber) {
    for (const char* text :
         {"", "-", ".", "x", "1x", "1.2.3", "1e", "1e+", "e5", "--1", "1e5x", "0x10", " 1"}) {
        EXPECT_EQ(fixed_word(text, {4, 4}), "syntax") << text;
    }
}

TEST(FixedPoint, RoundsToTheNearestAwayFromZero) {
    EXPECT_EQ(fixed_word("0.1", {1, 15}), "0CCD");
    EXPECT_EQ(fixed_word("-0.1", {1, 15}), "F333");
    EXPECT_EQ(fixed_word("0.5", {4, 0}), "1");
    EXPECT_EQ(fixed_word("-0.5", {4, 0}), "F");
    EXPECT_EQ(fixed_word("0.49999999999999999999999999999999999", {4, 0}), "0");
}

TEST(FixedPoint, RoundsTiesToEven) {
    EXPECT_EQ(fixed_word("0.5", {4, 0}, rounding::even), "0");
    EXPECT_EQ(fixed_word("1.5", {4, 0}, rounding::even), "2");
    EXPECT_EQ(fixed_word("-2.5", {4, 0}, rounding::even), "E");
    EXPECT_EQ(fixed_word("0.50000000000000000000000000000000001", {4, 0}, rounding::even), "1");
}

TEST(FixedPoint, RoundsDown) {
    EXPECT_EQ(fixed_word("1.99", {4, 0}, rounding::down), "1");
    EXPECT_EQ(fixed_word("-1.01", {4, 0}, rounding::down), "E");
    EXPECT_EQ(fixed_word("-1", {4, 0}, rounding::down), "F");
    EXPECT_EQ(fixed_word("-1e-999999999999999999999", {4, 4}, rounding::down), "FF");
    EXPECT_EQ(fixed_word("1e-999999999999999999999", {4, 4}, rounding::down), "00");
}

TEST(FixedPoint, KnowsItsRange) {
    EXPECT_EQ(fixed_word("-1", {1, 3}), "8");
    EXPECT_EQ(fixed_word("0.875", {1, 3}), "7");
    EXPECT_EQ(fixed_word("1", {1, 3}), "out of range");
    EXPECT_EQ(fixed_word("0.9375", {1, 3}), "out of range");
    EXPECT_EQ(fixed_word("0.9375", {1, 3}, rounding::down), "7");
    EXPECT_EQ(fixed_word("-1.05", {1, 3}), "8");
    EXPECT_EQ(fixed_word("-1.05", {1, 3}, rounding::down), "out of range");
    EXPECT_EQ(fixed_word("3", {1, 3}), "out of range");
    EXPECT_EQ(fixed_word("5", {1, 3}), "out of range");
    EXPECT_EQ(fixed_word("-1.99999", {1, 3}), "out of range");
    EXPECT_EQ(fixed_word("-2", {1, 3}), "out of range");
    EXPECT_EQ(fixed_word("1e999999999999999999", {1, 3}), "out of range");
}

TEST(FixedPoint, SaturatesWhereItIsTo) {
    EXPECT_EQ(fixed_word("1", {1, 3}, rounding::nearest, true), "7");
    EXPECT_EQ(fixed_word("-9.5", {1, 3}, rounding::nearest, true), "8");
    EXPECT_EQ(fixed_word("1e99", {1, 15}, rounding::nearest, true), "7FFF");
    EXPECT_EQ(fixed_word("-1e99", {1, 0}, rounding::nearest, true), "1");
    EXPECT_EQ(fixed_word("1x", {1, 0}, rounding::nearest, true), "syntax");
}

TEST(FixedPoint, IsExactAtAnySize) {
    // A tenth is 0.000110011001100... in binary.
    const std::string digits = "0C" + std::string(61, 'C');
    EXPECT_EQ(fixed_word("0.1", {1, 251}, rounding::down), digits);
    // 2^-300 as a decimal fraction with all digits.
    const std::string power =
        "0." + std::string(90, '0') +
        "490909346529772655309577195498627564297521551249944956511154911718710525472171585646009788"
        "403733195227718357156513187851316791861042471890280751482410896345225310546445986192853894"
        "181098439730703830718994140625";
    std::string expected(76, '0');
    expected[75] = '1';
    EXPECT_EQ(fixed_word(power, {4, 300}, rounding::down), expected);
}

TEST(FixedPoint, AgreesWithWholeNumbers) {
    std::mt19937 random(8);
    for (int round = 0; round < 20000; ++round) {
        const auto thousandths = static_cast<std::int64_t>(random() % 16000) - 8000;
        const std::string text = (thousandths < 0 ? "-" : "") + std::to_string(std::abs(thousandths)) + "e-3";
        const std::int64_t scaled = thousandths * 256;
        const std::int64_t floor = scaled >= 0 ? scaled / 1000 : -((-scaled + 999) / 1000);
        const std::int64_t rest = scaled - floor * 1000;
        const bool up = rest > 500 || (rest == 500 && scaled > 0);
        const bool up_even = rest > 500 || (rest == 500 && floor % 2 != 0);
        const auto word_of = [](std::int64_t value) {
            return word::of_signed(value, 12).to_text(radix::hex).value();
        };
        ASSERT_EQ(fixed_word(text, {4, 8}, rounding::down), word_of(floor)) << text;
        if (floor + 1 < 2048) {
            ASSERT_EQ(fixed_word(text, {4, 8}), word_of(floor + (up ? 1 : 0))) << text;
            ASSERT_EQ(fixed_word(text, {4, 8}, rounding::even), word_of(floor + (up_even ? 1 : 0))) << text;
        }
    }
}

} // namespace

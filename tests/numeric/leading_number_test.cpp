#include "kvr/numeric/leading_number.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

using kvr::leading_float;
using kvr::leading_integer;

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(LeadingInteger, ReadsDigitsUpToTheFirstOtherCharacter) {
    EXPECT_EQ(leading_integer("42"), 42);
    EXPECT_EQ(leading_integer("007x9"), 7);
    EXPECT_EQ(leading_integer("8.4"), 8);
}

TEST(LeadingInteger, SkipsWhiteSpaceAndTakesOneSign) {
    EXPECT_EQ(leading_integer(" \t\n\v\f\r-12"), -12);
    EXPECT_EQ(leading_integer("+12"), 12);
    EXPECT_EQ(leading_integer("+-12"), 0);
    EXPECT_EQ(leading_integer("- 12"), 0);
}

TEST(LeadingInteger, IsZeroWithoutANumber) {
    EXPECT_EQ(leading_integer(""), 0);
    EXPECT_EQ(leading_integer(" "), 0);
    EXPECT_EQ(leading_integer("-"), 0);
    EXPECT_EQ(leading_integer("x1"), 0);
}

TEST(LeadingInteger, IsTheNearestIntBeyondTheRange) {
    EXPECT_EQ(leading_integer("2147483647"), INT_MAX);
    EXPECT_EQ(leading_integer("2147483648"), INT_MAX);
    EXPECT_EQ(leading_integer("-2147483648"), INT_MIN);
    EXPECT_EQ(leading_integer("-2147483649"), INT_MIN);
    EXPECT_EQ(leading_integer("21474836470"), INT_MAX);
    EXPECT_EQ(leading_integer("-21474836470"), INT_MIN);
    EXPECT_EQ(leading_integer(std::string(1000, '9')), INT_MAX);
    EXPECT_EQ(leading_integer("-" + std::string(1000, '9')), INT_MIN);
}

TEST(LeadingInteger, EndsAtANul) {
    EXPECT_EQ(leading_integer(std::string("1\0002", 3)), 1);
}

TEST(LeadingFloat, ReadsDecimalNumbers) {
    EXPECT_EQ(leading_float("0.625"), 0.625);
    EXPECT_EQ(leading_float(".5"), 0.5);
    EXPECT_EQ(leading_float("5."), 5.0);
    EXPECT_EQ(leading_float("25e-2"), 0.25);
    EXPECT_EQ(leading_float("2.5E+1"), 25.0);
}

TEST(LeadingFloat, SkipsWhiteSpaceAndTakesOneSign) {
    EXPECT_EQ(leading_float(" \t\n\v\f\r-0.5"), -0.5);
    EXPECT_EQ(leading_float("+0.5"), 0.5);
    EXPECT_EQ(leading_float("+-0.5"), 0.0);
    EXPECT_EQ(leading_float("--0.5"), 0.0);
}

TEST(LeadingFloat, StopsAtWhatIsNoPartOfTheNumber) {
    EXPECT_EQ(leading_float("0.5.5"), 0.5);
    EXPECT_EQ(leading_float("0,5"), 0.0);
    EXPECT_EQ(leading_float("3e"), 3.0);
    EXPECT_EQ(leading_float("3e+x"), 3.0);
    EXPECT_EQ(leading_float("3e+-1"), 3.0);
    EXPECT_EQ(leading_float("0x3p+-1"), 3.0);
    EXPECT_EQ(leading_float(std::string("3\0004", 3)), 3.0);
}

TEST(LeadingFloat, IsZeroWithoutANumber) {
    for (const char* text : {"", " ", "-", "+", ".", "e5", "x", "-.e1", "in", "na"}) {
        EXPECT_EQ(leading_float(text), 0.0) << text;
    }
}

TEST(LeadingFloat, ReadsHexadecimalNumbers) {
    EXPECT_EQ(leading_float("0x1.8p3"), 12.0);
    EXPECT_EQ(leading_float("-0X.8"), -0.5);
    EXPECT_EQ(leading_float("0xA"), 10.0);
    EXPECT_EQ(leading_float("0x1p-1z"), 0.5);
}

TEST(LeadingFloat, HexadecimalPrefixWithoutDigitsIsZero) {
    for (const char* text : {"0x", "0xg", "0x.", "0x.p1", "0x-1", "0xinf", "0x0x1"}) {
        EXPECT_EQ(leading_float(text), 0.0) << text;
    }
}

TEST(LeadingFloat, ReadsInfinityInAnyCase) {
    EXPECT_EQ(leading_float("inf"), infinity);
    EXPECT_EQ(leading_float("-INFINITY"), -infinity);
    EXPECT_EQ(leading_float("Infinite"), infinity);
}

TEST(LeadingFloat, ReadsNotANumber) {
    EXPECT_TRUE(std::isnan(leading_float("nan")));
    EXPECT_TRUE(std::isnan(leading_float("-NaN(1)")));
}

TEST(LeadingFloat, TooLargeIsInfinity) {
    EXPECT_EQ(leading_float("1e309"), infinity);
    EXPECT_EQ(leading_float("-1e99999999999999999999"), -infinity);
    EXPECT_EQ(leading_float("0.00001e400"), infinity);
    EXPECT_EQ(leading_float("0x1p1024"), infinity);
    EXPECT_EQ(leading_float("0x1" + std::string(400, '0') + "p-500"), infinity);
    EXPECT_EQ(leading_float("0x1p99999999999999999999"), infinity);
    EXPECT_EQ(leading_float(std::string(400, '9')), infinity);
    EXPECT_EQ(leading_float("0." + std::string(700, '0') + "1e1100"), infinity);
    EXPECT_EQ(leading_float("0x0." + std::string(1200, '0') + "1p+5900"), infinity);
}

TEST(LeadingFloat, TooSmallIsZero) {
    EXPECT_EQ(leading_float("1e-400"), 0.0);
    EXPECT_EQ(leading_float("1e-99999999999999999999"), 0.0);
    EXPECT_EQ(leading_float("100000e-400"), 0.0);
    EXPECT_EQ(leading_float("0x1p-1080"), 0.0);
    EXPECT_EQ(leading_float("0x0." + std::string(400, '0') + "1p+500"), 0.0);
    EXPECT_EQ(leading_float("0." + std::string(400, '0') + "1"), 0.0);
}

TEST(LeadingFloat, ReadsSubnormalNumbers) {
    EXPECT_EQ(leading_float("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(leading_float("0x1p-1074"), std::numeric_limits<double>::denorm_min());
}

std::string random_number_like_text(std::mt19937& random) {
    static const std::string characters = "0001123459..eE+- xXpPaAfinFIN";
    std::string text(random() % 12, ' ');
    for (char& character : text) {
        character = characters[random() % characters.size()];
    }
    static const char* const starts[] = {"", "", "0x", "-0X1", "1e", "0.", "inf", "9e30", "1e-3"};
    return starts[random() % std::size(starts)] + text;
}

// The C functions agree in the locale "C", in which a program starts.
TEST(LeadingFloat, AgreesWithTheCFunctionOnRandomTexts) {
    ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    std::mt19937 random(99);
    for (int round = 0; round < 200000; ++round) {
        const std::string text = random_number_like_text(random);
        const double expected = std::strtod(text.c_str(), nullptr);
        const double read = leading_float(text);
        ASSERT_TRUE(read == expected || (std::isnan(read) && std::isnan(expected)))
            << '"' << text << "\": " << read << ", not " << expected;
    }
}

TEST(LeadingInteger, AgreesWithTheCFunctionOnRandomTexts) {
    std::mt19937 random(98);
    for (int round = 0; round < 100000; ++round) {
        const std::string text = random_number_like_text(random);
        const long expected = std::strtol(text.c_str(), nullptr, 10);
        if (expected >= INT_MIN && expected <= INT_MAX) {
            ASSERT_EQ(leading_integer(text), expected) << '"' << text << '"';
        }
    }
}

} // namespace

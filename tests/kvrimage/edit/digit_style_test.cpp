#include "kvrimage/edit/digit_style.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(DigitStyle, CountsDigitsWithoutTheSign) {
    EXPECT_EQ(style_of("0012"), (digit_style{4, false}));
    EXPECT_EQ(style_of("-12"), (digit_style{2, false}));
}

TEST(DigitStyle, IsLowerCaseWhenNoLetterIsUpperCase) {
    EXPECT_TRUE(style_of("0fe").lower_case);
    EXPECT_FALSE(style_of("0Fe").lower_case);
    EXPECT_FALSE(style_of("0FE").lower_case);
    EXPECT_FALSE(style_of("012").lower_case);
}

TEST(StyleFinder, WithoutNumbersIsOneDigit) {
    EXPECT_EQ(style_finder().found(), digit_style());
}

TEST(StyleFinder, TakesTheFewestDigits) {
    style_finder finder;
    finder.see("0012");
    finder.see("-12");
    finder.see("100");
    EXPECT_EQ(finder.found(), (digit_style{2, false}));
}

TEST(StyleFinder, OneUpperCaseLetterMakesAllUpperCase) {
    style_finder finder;
    finder.see("0a");
    EXPECT_TRUE(finder.found().lower_case);
    finder.see("0B");
    EXPECT_FALSE(finder.found().lower_case);
}

TEST(StyleFinder, TakesSeveralNumbersAtOnce) {
    style_finder finder;
    finder.see_all("0a 1b", 2, true);
    EXPECT_EQ(finder.found(), (digit_style{2, true}));
    finder.see_all("012 3AB", 3, false);
    EXPECT_EQ(finder.found(), (digit_style{2, false}));
}

TEST(InStyle, AddsAndLeavesOutLeadingZeros) {
    EXPECT_EQ(in_style("1F", {4, false}), "001F");
    EXPECT_EQ(in_style("001F", {1, false}), "1F");
    EXPECT_EQ(in_style("000", {1, false}), "0");
    EXPECT_EQ(in_style("000", {2, false}), "00");
}

TEST(InStyle, KeepsTheSignBeforeTheZeros) {
    EXPECT_EQ(in_style("-7", {3, false}), "-007");
    EXPECT_EQ(in_style("-007", {1, false}), "-7");
}

TEST(InStyle, LowersLettersWhenAsked) {
    EXPECT_EQ(in_style("0AX", {2, true}), "ax");
    EXPECT_EQ(in_style("0AX", {2, false}), "AX");
}

TEST(DigitStyle, IsThatOfNumbersWrittenInIt) {
    EXPECT_EQ(in_style("FE", {4, true}), "00fe");
    EXPECT_EQ(in_style("-FE", {4, false}), "-00FE");
    EXPECT_EQ(in_style("00FE", {1, false}), "FE");
    EXPECT_EQ(in_style("000", {2, false}), "00");
}

TEST(DigitStyle, LettersAreThoseOfTheAlphabetOnly) {
    EXPECT_FALSE(style_of("1{").lower_case);
    EXPECT_FALSE(style_of("1`").lower_case);
    EXPECT_TRUE(style_of("1z").lower_case);
}

} // namespace

#include "kvrimage/layout/canonical_digits.h"

#include <gtest/gtest.h>

namespace {

using kvrimage::canonical_number;
using kvrimage::canonical_word_digits;
using kvrimage::digits_of_the_text;
using kvrimage::radix;

TEST(CanonicalDigits, WordsHaveAllTheirs) {
    EXPECT_EQ(canonical_word_digits(radix::hex, 9), 3U);
    EXPECT_EQ(canonical_word_digits(radix::oct, 8), 3U);
    EXPECT_EQ(canonical_word_digits(radix::bin, 8), 8U);
}

TEST(CanonicalDigits, DecimalWordsHaveNoZerosInFront) {
    EXPECT_EQ(canonical_word_digits(radix::dec, 8), 1U);
    EXPECT_EQ(canonical_word_digits(radix::uns, 8), 1U);
}

TEST(CanonicalDigits, VeryWideWordsAreNotFilledUp) {
    EXPECT_EQ(canonical_word_digits(radix::hex, 2048), 512U);
    EXPECT_EQ(canonical_word_digits(radix::hex, 2049), digits_of_the_text);
}

TEST(CanonicalDigits, NumbersAreFilledUpAndInUpperCase) {
    EXPECT_EQ(canonical_number("a", 4), "000A");
    EXPECT_EQ(canonical_number("000a", 2), "0A");
    EXPECT_EQ(canonical_number("-05", 1), "-5");
}

TEST(CanonicalDigits, NumbersKeepTheDigitsOfTheText) {
    EXPECT_EQ(canonical_number("00a", digits_of_the_text), "00A");
    EXPECT_EQ(canonical_number("-05", digits_of_the_text), "-05");
}

TEST(CanonicalDigits, OtherCharactersKeepTheLength) {
    EXPECT_EQ(canonical_number("0xa", 4), "0XA");
    EXPECT_EQ(canonical_number("z", 4), "Z");
    EXPECT_EQ(canonical_number("a_b", 4), "A_B");
    EXPECT_EQ(canonical_number("-", 4), "-");
    EXPECT_EQ(canonical_number("", 4), "");
}

} // namespace

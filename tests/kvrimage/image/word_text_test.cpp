#include "kvrimage/image/word_text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using namespace kvrimage;

TEST(WordOfAnySign, IsSignedWhereItCanBe) {
    std::string word;
    bool is_unsigned = false;
    EXPECT_FALSE(make_word_of_any_sign("-128", radix::dec, 8, word, is_unsigned));
    EXPECT_EQ(word, "80");
    EXPECT_FALSE(is_unsigned);
}

TEST(WordOfAnySign, IsUnsignedWhereItIsTooLargeForASign) {
    std::string word;
    bool is_unsigned = false;
    EXPECT_FALSE(make_word_of_any_sign("200", radix::dec, 8, word, is_unsigned));
    EXPECT_EQ(word, "C8");
    EXPECT_TRUE(is_unsigned);
}

TEST(WordOfAnySign, ThatFitsNeitherWayIsTooWide) {
    std::string word;
    bool is_unsigned = false;
    const auto above = make_word_of_any_sign("300", radix::dec, 8, word, is_unsigned);
    ASSERT_TRUE(above);
    EXPECT_EQ(above->what, word_fault::kind::too_wide);
    EXPECT_EQ(above->bits_needed, 9U);
    const auto below = make_word_of_any_sign("-200", radix::dec, 8, word, is_unsigned);
    ASSERT_TRUE(below);
    EXPECT_EQ(below->what, word_fault::kind::too_wide);
    EXPECT_EQ(below->bits_needed, 9U);
    EXPECT_FALSE(is_unsigned);
}

TEST(WordOfAnySign, OfOtherFaultsHasThatOfTheSignedOne) {
    std::string word;
    bool is_unsigned = false;
    EXPECT_EQ(make_word_of_any_sign("1A", radix::dec, 8, word, is_unsigned)->what,
              word_fault::kind::invalid_digit);
    EXPECT_EQ(make_word_of_any_sign("1FF", radix::hex, 8, word, is_unsigned)->what,
              word_fault::kind::too_wide);
}

TEST(FindWideByte, FindsTheFirstThatAWordDoesNotHold) {
    EXPECT_EQ(find_wide_byte("AB\x7F\x80\xFF", 7), 3U);
    EXPECT_EQ(find_wide_byte("AB\x7F\x80\xFF", 8), std::nullopt);
    EXPECT_EQ(find_wide_byte("\xFF", 100), std::nullopt);
    EXPECT_EQ(find_wide_byte("\x01\x02", 1), 1U);
    EXPECT_EQ(find_wide_byte("", 1), std::nullopt);
}

} // namespace

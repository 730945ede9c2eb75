#include "kvrimage/picture/value_order.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(ValueOrder, KeyOfAnUnsignedValueIsTheValue) {
    const value_order order(9, {});
    EXPECT_EQ(order.key_of("000"), 0);
    EXPECT_EQ(order.key_of("1FF"), 511);
    EXPECT_EQ(order.key_of_zero(), 0);
    EXPECT_EQ(order.highest_key(), 511);
}

TEST(ValueOrder, KeyOfASignedValueIsItsDistanceFromTheLeast) {
    const value_order order(8, {.is_signed = true});
    EXPECT_EQ(order.key_of("80"), 0);
    EXPECT_EQ(order.key_of("FF"), 127);
    EXPECT_EQ(order.key_of("00"), 128);
    EXPECT_EQ(order.key_of("7F"), 255);
    EXPECT_EQ(order.key_of_zero(), 128);
}

TEST(ValueOrder, WordsWithoutAValueHaveNoKey) {
    const value_order order(8, {});
    EXPECT_EQ(order.key_of(""), std::nullopt);
    EXPECT_EQ(order.key_of("XX"), std::nullopt);
    EXPECT_EQ(order.key_of("0000000X"), std::nullopt);
}

TEST(ValueOrder, KeysHaveTheTextsOfTheirValues) {
    EXPECT_EQ(value_order(8, {.is_signed = true}).text_of(0), "-128");
    EXPECT_EQ(value_order(8, {.is_signed = true}).text_of(128), "0");
    EXPECT_EQ(value_order(1, {.is_signed = true}).text_of(0), "-1");
    EXPECT_EQ(value_order(64, {.is_signed = true}).text_of(0), "-9223372036854775808");
    EXPECT_EQ(value_order(64, {.is_signed = true}).text_of(~std::uint64_t{0}), "9223372036854775807");
    EXPECT_EQ(value_order(64, {}).text_of(~std::uint64_t{0}), "0xFFFFFFFFFFFFFFFF");
}

TEST(ValueOrder, FractionsAreRoundedToSixDigits) {
    const value_order order(16, {.is_signed = true, .fraction_bits = 15});
    EXPECT_EQ(order.text_of(0), "-1");
    EXPECT_EQ(order.text_of(0x8000), "0");
    EXPECT_EQ(order.text_of(0xC000), "0.5");
    EXPECT_EQ(order.text_of(0x7FFF), "-3.05176e-05");
    EXPECT_EQ(order.text_of(0xFFFF), "0.999969");
}

TEST(ValueOrder, WordsWithoutASignHaveNoFraction) {
    EXPECT_EQ(value_order(8, {.is_signed = false, .fraction_bits = 4}).text_of(0x10), "0x10");
}

TEST(ValueOrder, NoTextIsLongerThanItsSize) {
    EXPECT_EQ(value_order(8, {}).text_size(), 4);
    EXPECT_EQ(value_order(64, {}).text_size(), 18);
    EXPECT_EQ(value_order(64, {.is_signed = true}).text_size(), 20);
    EXPECT_EQ(value_order(16, {.is_signed = true, .fraction_bits = 15}).text_size(), 12);
}

} // namespace

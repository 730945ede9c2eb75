#include "kvrimage/picture/value_order.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(ValueOrder, KeyOfAnUnsignedValueIsTheValue) {
    const value_order order(9, false);
    EXPECT_EQ(order.key_of("000"), 0);
    EXPECT_EQ(order.key_of("1FF"), 511);
    EXPECT_EQ(order.key_of_zero(), 0);
    EXPECT_EQ(order.highest_key(), 511);
}

TEST(ValueOrder, KeyOfASignedValueIsItsDistanceFromTheLeast) {
    const value_order order(8, true);
    EXPECT_EQ(order.key_of("80"), 0);
    EXPECT_EQ(order.key_of("FF"), 127);
    EXPECT_EQ(order.key_of("00"), 128);
    EXPECT_EQ(order.key_of("7F"), 255);
    EXPECT_EQ(order.key_of_zero(), 128);
}

TEST(ValueOrder, WordsWithoutAValueHaveNoKey) {
    const value_order order(8, false);
    EXPECT_EQ(order.key_of(""), std::nullopt);
    EXPECT_EQ(order.key_of("XX"), std::nullopt);
    EXPECT_EQ(order.key_of("0000000X"), std::nullopt);
}

TEST(ValueOrder, KeysHaveTheTextsOfTheirValues) {
    EXPECT_EQ(value_order(8, true).text_of(0), "-128");
    EXPECT_EQ(value_order(8, true).text_of(128), "0");
    EXPECT_EQ(value_order(1, true).text_of(0), "-1");
    EXPECT_EQ(value_order(64, true).text_of(0), "-9223372036854775808");
    EXPECT_EQ(value_order(64, true).text_of(~std::uint64_t{0}), "9223372036854775807");
    EXPECT_EQ(value_order(64, false).text_of(~std::uint64_t{0}), "18446744073709551615");
}

} // namespace

#include "kvrimage/image/bit_field.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using kvrimage::bit_field;
using kvrimage::with_field;
using testing::HasSubstr;
using testing::ThrowsMessage;

std::string changed(const std::string& whole, const bit_field& field, const std::string& value) {
    return with_field(word_of_digits(whole), field, word_of_digits(value))
        .to_text(kvrimage::radix::bin)
        .value();
}

TEST(BitField, OfAWordGetsTheBitsOfAValue) {
    EXPECT_EQ(changed("10100101", {7, 4}, "0110"), "01100101");
    EXPECT_EQ(changed("10100101", {0, 0}, "0"), "10100100");
    EXPECT_EQ(changed("10100101", {7, 0}, "11110000"), "11110000");
}

TEST(BitField, KeepsDontCareBitsBesideIt) {
    EXPECT_EQ(changed("X1X0", {2, 1}, "01"), "X010");
    EXPECT_EQ(changed("X1X0", {3, 3}, "1"), "11X0");
}

TEST(BitField, TakesDontCareBits) {
    EXPECT_EQ(changed("0000", {2, 1}, "X1"), "0X10");
}

TEST(BitField, HasAWidth) {
    EXPECT_EQ((bit_field{7, 4}.width()), 4U);
    EXPECT_EQ((bit_field{3, 3}.width()), 1U);
    EXPECT_TRUE((bit_field{3, 3} == bit_field{3, 3}));
    EXPECT_FALSE((bit_field{3, 3} == bit_field{3, 2}));
}

TEST(BitField, BeyondTheWordIsRefused) {
    EXPECT_THAT(
        [] {
            static_cast<void>(changed("0000", {4, 4}, "1"));
        },
        ThrowsMessage<std::invalid_argument>(HasSubstr("bits 4 to 4 of a word of 4")));
    EXPECT_THAT(
        [] {
            static_cast<void>(changed("0000", {1, 2}, "1"));
        },
        ThrowsMessage<std::invalid_argument>(HasSubstr("bits 1 to 2 of a word of 4")));
}

TEST(BitField, RefusesAValueOfAnotherWidth) {
    EXPECT_THAT(
        [] {
            static_cast<void>(changed("0000", {2, 1}, "1"));
        },
        ThrowsMessage<std::invalid_argument>(HasSubstr("a value of 1 bits for a field of 2")));
}

TEST(BitField, AgreesWithDigitsThatAreReplaced) {
    memory_maker maker(20260101);
    for (int round = 0; round < rounds(2000); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(round % 10 == 0 ? 300 : 70));
        const auto low = static_cast<std::uint32_t>(maker.below(width));
        const auto high = static_cast<std::uint32_t>(low + maker.below(width - low));
        std::string bits = maker.bits(width, 5);
        const std::string value = maker.bits(high - low + 1, 7);
        const std::string made = changed(bits, {high, low}, value);
        for (std::uint32_t bit = low; bit <= high; ++bit) {
            bits[width - 1 - bit] = value[high - bit];
        }
        ASSERT_EQ(made, bits) << high << ':' << low;
    }
}

} // namespace

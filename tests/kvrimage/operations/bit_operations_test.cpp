#include "kvrimage/operations/bit_operations.h"
#include "tests/kvrimage/operations/plain_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>

namespace {

using namespace kvrimage;

memory_image memory_of_hex(std::uint32_t width, const std::vector<std::string>& words) {
    memory_image image(width, words.size());
    for (std::size_t address = 0; address < words.size(); ++address) {
        image.set(address, word::parse(words[address], radix::hex, width).value.value());
    }
    return image;
}

TEST(Masked, KeepsTheBitsOfTheMask) {
    EXPECT_EQ(masked(memory_of_hex(8, {"FF", "5A", "X3"}), word::of(0x3C, 8)), [] {
        memory_image image = memory_of_hex(8, {"3C", "18", "0"});
        image.set(2, word_of_digits("00XX0000"));
        return image;
    }());
}

TEST(Masked, RefusesAMaskOfAnotherWidthOrWithDontCareBits) {
    const memory_image image(8, 1);
    EXPECT_THROW(static_cast<void>(masked(image, word::of(1, 9))), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(masked(image, word_of_digits("0000000X"))), std::invalid_argument);
}

TEST(WithReversedBits, TurnsTheWordsAround) {
    EXPECT_EQ(with_reversed_bits(memory_of_hex(12, {"001", "C35"})), memory_of_hex(12, {"800", "AC3"}));
}

TEST(WithSwappedBytes, TurnsTheBytesAround) {
    EXPECT_EQ(with_swapped_bytes(memory_of_hex(32, {"11223344", "XX0000FF"})),
              memory_of_hex(32, {"44332211", "FF0000XX"}));
}

TEST(WithSwappedBytes, RefusesWordsThatAreNoWholeBytes) {
    EXPECT_THROW(static_cast<void>(with_swapped_bytes(memory_image(12, 1))), std::invalid_argument);
}

TEST(Inverted, LeavesDontCareBits) {
    EXPECT_EQ(inverted(memory_of_hex(8, {"0F", "X1"})), memory_of_hex(8, {"F0", "XE"}));
}

TEST(BitOperations, TakeFillsOfBillionsAtOnce) {
    memory_image image(16, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{word::of(0x1234, 16), word::of(0xFF00, 16)});
    const memory_image swapped = with_swapped_bytes(image);
    EXPECT_EQ(swapped[deepest_memory - 2], word::of(0x3412, 16));
    EXPECT_EQ(swapped[deepest_memory - 1], word::of(0x00FF, 16));
    EXPECT_EQ(swapped.count_set(), deepest_memory);
}

/// An operation and its equivalent on binary digits.
struct plain_operation {
    std::function<memory_image(const memory_image&)> made;
    std::function<std::string(const std::string&)> plain;
};

void expect_plain(const memory_image& image, const plain_operation& operation) {
    plain_words expected = plain_words_of(image);
    for (auto& value : expected) {
        value = value ? std::optional(operation.plain(*value)) : std::nullopt;
    }
    const memory_image made = operation.made(image);
    ASSERT_EQ(made.base(), image.base());
    ASSERT_EQ(plain_words_of(made), expected) << "width " << image.width();
}

std::string plainly_inverted(std::string bits) {
    for (char& bit : bits) {
        bit = bit == 'X' ? 'X' : bit == '0' ? '1' : '0';
    }
    return bits;
}

TEST(BitOperations, OfRandomMemoriesAreThoseOfTheDigits) {
    memory_maker maker(1);
    for (const std::uint32_t width :
         {1U, 2U, 4U, 7U, 8U, 12U, 16U, 24U, 32U, 61U, 64U, 65U, 72U, 100U, 128U, 129U, 256U, 300U}) {
        for (const unsigned dont_care_share : {0U, 3U, 200U}) {
            // Some memories have more than one page, so that words are stored in rows and in fills.
            const std::uint64_t depth = width % 32 == 0 && width <= 64 ? 1500 : 150;
            const memory_image image = maker.memory(width, depth, dont_care_share, 77);
            const std::string mask = maker.bits(width);
            expect_plain(image, {[&](const memory_image& of) { return masked(of, word_of_digits(mask)); },
                                 [&](std::string bits) {
                                     for (std::size_t i = 0; i < bits.size(); ++i) {
                                         bits[i] = mask[i] == '1' ? bits[i] : '0';
                                     }
                                     return bits;
                                 }});
            expect_plain(image, {with_reversed_bits, [](const std::string& bits) {
                                     return std::string(bits.rbegin(), bits.rend());
                                 }});
            expect_plain(image, {inverted, plainly_inverted});
            if (width % 8 == 0) {
                expect_plain(image, {with_swapped_bytes, [](const std::string& bits) {
                                         std::string swapped;
                                         for (std::size_t i = 0; i < bits.size(); i += 8) {
                                             swapped.insert(0, bits, i, 8);
                                         }
                                         return swapped;
                                     }});
            }
        }
    }
}

} // namespace

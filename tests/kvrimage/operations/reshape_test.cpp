#include "kvrimage/operations/reshape.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/operations/plain_operations.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

memory_image memory_of_words(std::uint32_t width, const std::vector<std::optional<std::uint64_t>>& values) {
    memory_image image(width, values.size());
    for (std::size_t address = 0; address < values.size(); ++address) {
        if (values[address]) {
            image.set(address, word::of(*values[address], width));
        }
    }
    return image;
}

std::string refusal_of_reshape(const memory_image& image, std::uint32_t width) {
    try {
        static_cast<void>(reshaped(image, width, bit_order::low_first));
    } catch (const std::exception& error) {
        return error.what();
    }
    return "none";
}

TEST(Reshaped, JoinsWordsWithTheFirstOneAtTheLowEnd) {
    EXPECT_EQ(reshaped(memory_of_words(8, {0x11, 0x22, 0x33, 0x44}), 16, bit_order::low_first),
              memory_of_words(16, {0x2211, 0x4433}));
}

TEST(Reshaped, JoinsWordsWithTheFirstOneAtTheHighEnd) {
    EXPECT_EQ(reshaped(memory_of_words(8, {0x11, 0x22, 0x33, 0x44}), 16, bit_order::high_first),
              memory_of_words(16, {0x1122, 0x3344}));
}

TEST(Reshaped, CutsWordsWhereTheWidthsDoNotDivide) {
    EXPECT_EQ(reshaped(memory_of_words(12, {0xABC, 0xDEF}), 8, bit_order::low_first),
              memory_of_words(8, {0xBC, 0xFA, 0xDE}));
    EXPECT_EQ(reshaped(memory_of_words(12, {0xABC, 0xDEF}), 8, bit_order::high_first),
              memory_of_words(8, {0xAB, 0xCD, 0xEF}));
}

TEST(Reshaped, LeavesWordsOutOfWhichNoBitIsSet) {
    EXPECT_EQ(reshaped(memory_of_words(8, {1, 2, {}, {}, 5, 6}), 16, bit_order::low_first),
              memory_of_words(16, {0x0201, {}, 0x0605}));
}

TEST(Reshaped, RefusesWordsThatLackBits) {
    EXPECT_EQ(refusal_of_reshape(memory_of_words(8, {1, {}, 3, 4}), 16),
              "a word would lack bits that are not set; the first one, at address 0x0, 8 of 16");
    EXPECT_EQ(refusal_of_reshape(memory_of_words(8, {1, 2, 3, {}, {}, {}, 4}), 32),
              "2 words would lack bits that are not set; the first one, at address 0x0, 8 of 32");
    EXPECT_THROW(static_cast<void>(reshaped(memory_of_words(8, {1, {}}), 16, bit_order::low_first)),
                 std::domain_error);
}

TEST(Reshaped, TakesTheBitsOfThePadWhereSomeAreMissing) {
    EXPECT_EQ(
        reshaped(memory_of_words(8, {1, {}, {}, {}, 5}), 16, bit_order::low_first, word::of(0xABCD, 16)),
        memory_of_words(16, {0xAB01, {}, 0xAB05}));
    EXPECT_EQ(
        reshaped(memory_of_words(8, {1, {}, {}, {}, 5}), 16, bit_order::high_first, word::of(0xABCD, 16)),
        memory_of_words(16, {0x01CD, {}, 0x05CD}));
}

TEST(Reshaped, KeepsTheBaseInWordsOfTheNewWidth) {
    memory_image bytes(8, 4, 0x1000);
    bytes.fill({0x1000, 0x1003}, std::array{word::of(0xA5, 8)});
    EXPECT_EQ(reshaped(bytes, 32, bit_order::low_first).base(), 0x400U);
    EXPECT_EQ(reshaped(reshaped(bytes, 32, bit_order::low_first), 8, bit_order::low_first), bytes);
}

TEST(Reshaped, RefusesABaseInTheMiddleOfAWord) {
    EXPECT_EQ(refusal_of_reshape(memory_image(8, 4, 0x1002), 32),
              "the lowest address 0x1002 of words of 8 bits is in the middle of a word of 32");
}

TEST(Reshaped, RefusesABaseAbove64Bits) {
    EXPECT_EQ(refusal_of_reshape(memory_image(32, 1, std::uint64_t{1} << 63U), 8),
              "the lowest address 0x8000000000000000 has no place among 64-bit addresses of words of 8 bits");
}

TEST(Reshaped, RefusesTooManyWords) {
    EXPECT_EQ(refusal_of_reshape(memory_image(32, deepest_memory), 31),
              "the memory would have 4433514629 words of 31 bits, more than 2^32");
}

TEST(Reshaped, RefusesWidthsThatNoWordHas) {
    EXPECT_EQ(refusal_of_reshape(memory_image(8, 1), 0), "words of 0 bits; a word has 1 to 1048576");
    EXPECT_THROW(static_cast<void>(reshaped(memory_image(8, 1), widest_word + 1, bit_order::low_first)),
                 std::invalid_argument);
}

TEST(Reshaped, RefusesAPadOfAnotherWidth) {
    EXPECT_THROW(static_cast<void>(reshaped(memory_image(8, 1), 16, bit_order::low_first, word::of(0, 8))),
                 std::invalid_argument);
}

TEST(Reshaped, TakesFillsOfBillionsAtOnce) {
    memory_image image(12, deepest_memory);
    image.fill({5, deepest_memory - 1}, std::array{word::of(0x123, 12), word::of(0x456, 12)});
    const memory_image made = reshaped(image, 32, bit_order::high_first, word::of(0, 32));
    EXPECT_EQ(made.depth(), deepest_memory / 8 * 3);
    EXPECT_EQ(made[1], word::of(0x00000001, 32));
    EXPECT_EQ(made[2], word::of(0x23456123, 32));
    EXPECT_EQ(made[made.depth() - 1], word::of(0x23456123, 32));
    EXPECT_EQ(reshaped(made, 16, bit_order::high_first).count_set(), (made.depth() - 1) * 2);
}

TEST(Reshaped, TakesFillsOfOneDigitAtOnceAtAnyWidth) {
    memory_image image(999'983, 4096);
    image.fill({0, 4095}, std::array{word(999'983)});
    const memory_image made = reshaped(image, 1'000'003, bit_order::low_first, word(1'000'003));
    EXPECT_EQ(made.depth(), 4096U);
    EXPECT_EQ(made.repetition_at(0).last, 4095U);
    EXPECT_EQ(made[4095], word(1'000'003));
}

TEST(Reshaped, TakesFewWordsOfADeepMemory) {
    memory_image image(7, deepest_memory);
    image.set(0, word::of(0x7F, 7));
    image.set(deepest_memory - 1, word::of(0x55, 7));
    const memory_image made = reshaped(image, 14, bit_order::low_first, word::of(0, 14));
    EXPECT_EQ(made.count_set(), 2U);
    EXPECT_EQ(made[0], word::of(0x7F, 14));
    EXPECT_EQ(made[deepest_memory / 2 - 1], word::of(0x55 << 7U, 14));
}

TEST(Reshaped, GoesOverTheMiddleOfTheAddresses) {
    constexpr std::uint64_t middle = deepest_memory / 2;
    memory_image image(16, middle / 2 + 300);
    for (std::uint64_t address = middle / 2 - 300; address < middle / 2 + 300; ++address) {
        image.set(address, word::of(address & 0xFFFFU, 16));
    }
    const memory_image made = reshaped(image, 8, bit_order::low_first);
    EXPECT_EQ(made.count_set(), 1200U);
    EXPECT_EQ(made[middle - 600], word::of((middle / 2 - 300) & 0xFFU, 8));
    EXPECT_EQ(made[middle + 599], word::of((middle / 2 + 299) >> 8U & 0xFFU, 8));
}

/// Expects that each word of @p expected is also in @p actual.
void expect_words_among(const plain_words& expected, const plain_words& actual) {
    ASSERT_GE(actual.size(), expected.size());
    for (std::size_t index = 0; index < expected.size(); ++index) {
        if (expected[index]) {
            ASSERT_EQ(actual[index], expected[index]) << index;
        }
    }
}

void expect_plain_reshape(memory_maker& maker, const memory_image& image, std::uint32_t width,
                          bit_order order) {
    SCOPED_TRACE(testing::Message() << image.width() << " to " << width);
    const std::string pad = maker.bits(width, 9);
    const plain_words words = plain_words_of(image);
    const plain_reshape expected = plainly_reshaped(words, image.width(), width, order, pad);
    const memory_image made = reshaped(image, width, order, word_of_digits(pad));
    ASSERT_EQ(plain_words_of(made), expected.words);
    if (expected.lacks_bits) {
        ASSERT_THROW(static_cast<void>(reshaped(image, width, order)), std::domain_error);
    } else {
        ASSERT_EQ(reshaped(image, width, order), made);
    }
    expect_words_among(words, plain_words_of(reshaped(made, image.width(), order, word(image.width()))));
}

TEST(Reshaped, OfAllWidthsIsThatOfTheBits) {
    memory_maker maker(2);
    for (std::uint32_t old_width = 1; old_width <= 72; ++old_width) {
        for (std::uint32_t width = 1 + old_width % sweep_step; width <= 72; width += sweep_step) {
            const memory_image image =
                maker.memory(old_width, 1 + maker.below(9), maker.below(3) == 0 ? 20 : 0);
            expect_plain_reshape(maker, image, width, bit_order::low_first);
            expect_plain_reshape(maker, image, width, bit_order::high_first);
            ASSERT_FALSE(HasFatalFailure());
        }
    }
}

TEST(Reshaped, OfWholeGroupsIsUndoneByTheReverse) {
    memory_maker maker(3);
    for (std::uint32_t old_width = 1; old_width <= 72; ++old_width) {
        for (std::uint32_t width = 1 + old_width % sweep_step; width <= 72; width += sweep_step) {
            memory_image image(old_width, width);
            for (std::uint32_t address = 0; address < width; ++address) {
                image.set(address, word::of(maker.below(2), old_width));
            }
            const auto order = maker.below(2) == 0 ? bit_order::low_first : bit_order::high_first;
            ASSERT_EQ(reshaped(reshaped(image, width, order), old_width, order), image)
                << old_width << " to " << width;
        }
    }
}

TEST(Reshaped, OfLargerMemoriesIsThatOfTheBits) {
    memory_maker maker(4);
    constexpr std::array widths = {1U, 5U, 8U, 32U, 64U, 65U, 128U, 129U, 300U, 1100U};
    for (const std::uint32_t old_width : widths) {
        for (const std::uint32_t width : widths) {
            const memory_image image =
                maker.memory(old_width, 1 + maker.below(6'000) / old_width, maker.below(3) == 0 ? 500 : 0);
            expect_plain_reshape(maker, image, width,
                                 maker.below(2) == 0 ? bit_order::low_first : bit_order::high_first);
            ASSERT_FALSE(HasFatalFailure());
        }
    }
}

} // namespace

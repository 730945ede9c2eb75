#include "kvrimage/operations/statistics/histogram.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

word word_of_byte(std::uint64_t value) {
    return word::of(value, 8);
}

TEST(HistogramOf, AnEmptyMemoryHasNoWordAndNoEntropy) {
    const word_histogram found = histogram_of(memory_image(8, deepest_memory), 10);
    EXPECT_EQ(found.set, 0);
    EXPECT_EQ(found.distinct, 0);
    EXPECT_THAT(found.most_frequent, IsEmpty());
    EXPECT_EQ(found.entropy, 0);
}

TEST(HistogramOf, WordsComeByFrequencyThenByTheirLastPlace) {
    memory_image image(8, 8);
    image.fill({0, 6}, std::array{word_of_byte(5), word_of_byte(9), word_of_byte(7), word_of_byte(9),
                                  word_of_byte(9), word_of_byte(7), word_of_byte(5)});
    EXPECT_THAT(histogram_of(image, 10).most_frequent,
                ElementsAre(counted_word{word_of_byte(9), 3}, counted_word{word_of_byte(7), 2},
                            counted_word{word_of_byte(5), 2}));
}

TEST(HistogramOf, OnlySoManyAsWantedAreKept) {
    memory_image image(8, 6);
    image.fill({0, 5}, std::array{word_of_byte(1), word_of_byte(2), word_of_byte(2), word_of_byte(3),
                                  word_of_byte(3), word_of_byte(3)});
    EXPECT_THAT(histogram_of(image, 1).most_frequent, ElementsAre(counted_word{word_of_byte(3), 3}));
    const word_histogram none = histogram_of(image, 0);
    EXPECT_THAT(none.most_frequent, IsEmpty());
    EXPECT_EQ(none.distinct, 3);
}

TEST(HistogramOf, EntropyIsThatOfEquallyFrequentWords) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1},
               std::array{word_of_byte(1), word_of_byte(2), word_of_byte(3), word_of_byte(4)});
    const word_histogram found = histogram_of(image, 1);
    EXPECT_EQ(found.set, deepest_memory);
    EXPECT_EQ(found.entropy, 2.0);
    EXPECT_THAT(found.most_frequent, ElementsAre(counted_word{word_of_byte(1), deepest_memory / 4}));
}

TEST(HistogramOf, EntropyOfEqualWordsIsNone) {
    memory_image image(8, deepest_memory);
    image.fill_unset(word_of_byte(1));
    EXPECT_EQ(histogram_of(image, 1).entropy, 0.0);
}

TEST(HistogramOf, EntropyOfThreeToOne) {
    memory_image image(8, 4);
    image.fill({0, 3}, std::array{word_of_byte(1), word_of_byte(1), word_of_byte(1), word_of_byte(2)});
    EXPECT_DOUBLE_EQ(histogram_of(image, 1).entropy, 2 - 0.75 * std::log2(3));
}

TEST(HistogramOf, WordsWithDontCareBitsAreWordsOfTheirOwn) {
    memory_image image(4, 4);
    image.fill({0, 3}, std::array{word_of_digits("XXXX"), word_of_digits("0X01"), word_of_digits("0001"),
                                  word_of_digits("0X01")});
    EXPECT_THAT(histogram_of(image, 3).most_frequent,
                ElementsAre(counted_word{word_of_digits("0X01"), 2}, counted_word{word_of_digits("XXXX"), 1},
                            counted_word{word_of_digits("0001"), 1}));
}

TEST(HistogramOf, OfRandomMemoriesIsThatOfAPlainCount) {
    memory_maker maker(21);
    for (int round = 0; round < rounds(200); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(70));
        const memory_image image = maker.memory(width, 1 + maker.below(300), round % 3 == 0 ? 9 : 0, 77);
        std::map<std::string, std::uint64_t> counts;
        std::uint64_t set = 0;
        for (const auto& bits : plain_words_of(image)) {
            set += bits ? 1U : 0U;
            counts[bits.value_or("")] += bits ? 1U : 0U;
        }
        counts.erase("");
        double entropy = 0;
        for (const auto& [bits, count] : counts) {
            const double share = static_cast<double>(count) / static_cast<double>(set);
            entropy -= share * std::log2(share);
        }
        const word_histogram found = histogram_of(image, 5);
        ASSERT_EQ(found.set, set);
        ASSERT_EQ(found.distinct, counts.size());
        ASSERT_NEAR(found.entropy, entropy, 1e-9);
        ASSERT_EQ(found.most_frequent.size(), std::min<std::size_t>(5, counts.size()));
        for (const counted_word& one : found.most_frequent) {
            const auto known = counts.find(one.value.to_text(radix::bin).value());
            ASSERT_NE(known, counts.end());
            ASSERT_EQ(known->second, one.count);
            counts.erase(known);
        }
        for (const auto& [bits, count] : counts) { // the others are not more frequent
            ASSERT_LE(count, found.most_frequent.back().count);
        }
    }
}

} // namespace

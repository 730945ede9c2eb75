#include "kvrimage/operations/statistics.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <string>

namespace {

using namespace kvrimage;

word counted_word_of(const std::string& bits) {
    return word::parse(bits, radix::bin, static_cast<std::uint32_t>(bits.size())).value.value();
}

void expect_statistics(const word_statistics& found, const word_statistics& expected) {
    EXPECT_EQ(found.set, expected.set);
    EXPECT_EQ(found.runs, expected.runs);
    EXPECT_EQ(found.distinct, expected.distinct);
    EXPECT_EQ(found.most_frequent, expected.most_frequent);
    EXPECT_EQ(found.most_frequent_count, expected.most_frequent_count);
}

/// The same, word by word.
word_statistics count_plainly(const memory_image& image) {
    word_statistics statistics;
    std::map<std::string, std::uint64_t> counts;
    std::optional<word> previous;
    for (std::uint64_t address = image.base(); address <= image.last_address(); ++address) {
        const std::optional<word> value = image[address];
        if (value) {
            ++statistics.set;
            statistics.runs += value != previous ? 1U : 0U;
            const std::uint64_t count = ++counts[value->to_text(radix::bin).value()];
            if (count > statistics.most_frequent_count) {
                statistics.most_frequent_count = count;
                statistics.most_frequent = value;
            }
        }
        previous = value;
    }
    statistics.distinct = counts.size();
    return statistics;
}

TEST(CountWords, OfAnEmptyMemoryAreNone) {
    expect_statistics(count_words(memory_image(8, deepest_memory)), {});
}

TEST(CountWords, CountsRunsOfEqualWords) {
    memory_image image(8, 10);
    image.fill({0, 2}, std::array{word::of(1, 8)});
    image.set(4, word::of(1, 8));
    image.set(5, word::of(2, 8));
    expect_statistics(count_words(image), {5, 3, 2, word::of(1, 8), 4});
}

TEST(CountWords, OfEquallyFrequentWordsTheOneWhoseLastPlaceIsTheLowestIsGiven) {
    memory_image image(8, 4);
    image.fill({0, 3}, std::array{word::of(9, 8), word::of(3, 8), word::of(3, 8), word::of(9, 8)});
    expect_statistics(count_words(image), {4, 3, 2, word::of(3, 8), 2});
}

TEST(CountWords, TakesFillsOfBillionsAtOnce) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{word::of(9, 8), word::of(3, 8)});
    expect_statistics(count_words(image),
                      {deepest_memory, deepest_memory, 2, word::of(9, 8), deepest_memory / 2});
    image.fill({0, deepest_memory - 1}, std::array{word::of(9, 8)});
    expect_statistics(count_words(image), {deepest_memory, 1, 1, word::of(9, 8), deepest_memory});
}

TEST(CountWords, WordsWithDontCareBitsAndPlainOnesCountTogether) {
    memory_image image(4, 6);
    image.set(0, word::of(1, 4));
    image.set(1, counted_word_of("XXXX"));
    image.set(2, counted_word_of("XX01"));
    image.set(3, counted_word_of("XX01"));
    image.set(5, word::of(1, 4));
    expect_statistics(count_words(image), {5, 4, 3, counted_word_of("XX01"), 2});
}

TEST(CountWords, TakesWideWords) {
    memory_image image(100, 3);
    image.set(0, word::of(1, 100));
    image.set(1, word::of(2, 100));
    image.set(2, word::of(2, 100));
    expect_statistics(count_words(image), {3, 2, 2, word::of(2, 100), 2});
}

TEST(CountWords, TakesHundredThousandsOfWideWordsThatAlternate) {
    const auto depth = static_cast<std::uint64_t>(rounds(300000));
    memory_image image(100, depth);
    const std::array<word, 2> words = {word::of(1, 100), word::of(2, 100)};
    for (std::uint64_t address = 0; address < depth; ++address) {
        image.set(address, words[address % 2]);
    }
    expect_statistics(count_words(image), {depth, depth, 2, words[0], depth / 2});
}

TEST(CountWords, TakesHundredThousandsOfDistinctWideWords) {
    const auto depth = static_cast<std::uint64_t>(rounds(300000));
    memory_image image(100, depth);
    for (std::uint64_t address = 0; address < depth; ++address) {
        image.set(address, word::of(address, 100));
    }
    image.set(depth - 1, word::of(7, 100));
    expect_statistics(count_words(image), {depth, depth, depth - 1, word::of(7, 100), 2});
}

TEST(CountWords, OfRandomMemoriesAreThoseOfAPlainCount) {
    std::mt19937 engine(1);
    for (const std::uint32_t width : {1U, 7U, 16U, 32U, 61U, 64U, 65U, 100U}) {
        for (const unsigned values : {2U, 30U, 100000U}) {
            memory_image image(width, 4000, 99);
            const auto random_word = [&] {
                std::string bits(width, '0');
                const auto number = static_cast<unsigned>(engine() % values);
                for (std::size_t i = 0; i < bits.size() && i < 17; ++i) {
                    bits[bits.size() - 1 - i] = (number >> i & 1U) != 0 ? '1' : '0';
                }
                bits[0] = engine() % 50 == 0 ? 'X' : bits[0];
                return counted_word_of(bits);
            };
            for (std::uint64_t address = 99; address < 2500; ++address) {
                image.set(address, random_word());
            }
            image.fill({2000, 4000}, std::array{random_word(), random_word(), random_word()});
            image.unset({1500, 1600});
            expect_statistics(count_words(image), count_plainly(image));
        }
    }
}

} // namespace

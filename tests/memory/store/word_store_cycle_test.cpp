// A cycle at words that do not repeat, and a pattern of texts that are too long together.

#include "kvr/memory/store/word_pattern.h"
#include "kvr/memory/store/word_store.h"
#include "kvr/memory/store/word_tree.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

TEST(WordStoreCycle, OfAWordInAPageIsThatWordWithoutAPeriod) {
    kvr::word_store words;
    words.resize(10000, "0");
    words.set(5000, "A");
    words.set(7000, "B");
    EXPECT_EQ(words[7000], "B");
    for (const std::uint32_t read_before : {7000U, 5000U}) {
        EXPECT_NE(words[read_before], "0");
        const kvr::word_cycle cycle = words.cycle_at(5000);
        EXPECT_EQ(cycle.first, 5000U);
        EXPECT_EQ(cycle.last, 5000U);
        EXPECT_EQ(cycle.period, 0U);
    }
}

TEST(WordStoreCycle, OfEqualWordsEndsWithTheLastWord) {
    constexpr auto of_one_root = static_cast<std::uint32_t>(kvr::root_words);
    for (const std::uint32_t size :
         {1U, 2U, 3U, 1000U, 1025U, of_one_root - 1, of_one_root, of_one_root + 1, 3 * of_one_root + 2}) {
        kvr::word_store words;
        words.resize(size, "7");
        for (const std::uint32_t address : {0U, size / 2, size - 1}) {
            const kvr::word_cycle cycle = words.cycle_at(address);
            EXPECT_EQ(cycle.first, address);
            EXPECT_EQ(cycle.last, size - 1);
            EXPECT_EQ(cycle.period, 1U);
        }
    }
}

TEST(WordStoreCycle, OfSeveralEqualValuesHasAPeriodOfOne) {
    kvr::word_store words;
    words.resize(10000, "0");
    words.fill(0, 9999, {"1", "1", "1"});
    EXPECT_EQ(words.cycle_at(0).period, 1U);
    words.fill(0, 9999, {"1", "1", "2"});
    EXPECT_EQ(words.cycle_at(0).period, 3U);
}

TEST(WordStoreCycle, IsKnownForValuesThatComeTwice) {
    std::vector<std::string> texts;
    for (std::uint32_t value = 0; value < kvr::page_words; ++value) {
        texts.push_back(std::to_string(value));
    }
    kvr::word_store words;
    words.resize(5 * kvr::page_words, "0");
    words.fill(0, 2 * kvr::page_words - 1, {texts.begin(), texts.end()});
    EXPECT_EQ(words.cycle_at(0).last, 2 * kvr::page_words - 1);
    EXPECT_EQ(words.cycle_at(0).period, kvr::page_words);
}

constexpr std::size_t longest_texts_of_a_pattern = std::numeric_limits<std::uint32_t>::max();

// The lengths are added up before any character is read.
TEST(WordPatternLength, OfAllTextsTogetherIsLimited) {
    const std::string text = "x";
    const std::string_view values[] = {{text.data(), longest_texts_of_a_pattern}, {text.data(), 1}};
    EXPECT_THROW(static_cast<void>(kvr::word_pattern::repeating(0, values, 2)), std::length_error);
}

#if SIZE_MAX > UINT32_MAX // else no text has these lengths
TEST(WordPatternLength, OfOneTextIsLimited) {
    const std::string text = "x";
    EXPECT_THROW(static_cast<void>(kvr::word_pattern::uniform({text.data(), longest_texts_of_a_pattern + 1})),
                 std::length_error);
}

TEST(WordPatternLength, UpToTheLimitNeedsMemoryOnly) {
    const std::string text = "x";
    const std::string_view values[] = {{text.data(), longest_texts_of_a_pattern - 1}, {text.data(), 1}};
    const failing_large_allocations failing(longest_texts_of_a_pattern);
    EXPECT_THROW(static_cast<void>(kvr::word_pattern::repeating(0, values, 2)), std::bad_alloc);
    EXPECT_THROW(static_cast<void>(kvr::word_pattern::uniform({text.data(), longest_texts_of_a_pattern})),
                 std::bad_alloc);
}
#endif

} // namespace

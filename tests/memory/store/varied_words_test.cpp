#include "kvr/memory/store/varied_words.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using kvr::page_words;
using kvr::pattern_ref;
using kvr::varied_words;
using kvr::word_pattern;

TEST(VariedWords, KnowTheirShortestAndTheirLongestText) {
    varied_words words;
    words.set(0, "three");
    words.set(1, "one");
    words.set(2, "twenty characters...");
    words.set(3, "four");
    EXPECT_EQ(words.shortest(), 3U);
    EXPECT_EQ(words.longest(), 20U);
    EXPECT_EQ(words.texts(), 4U);
}

TEST(VariedWords, DropUnusedTextsOnceTheyAreFourForEachWordOfAPage) {
    varied_words words;
    for (std::uint32_t text = 0; text < 4 * page_words; ++text) {
        words.set(7, "x");
    }
    EXPECT_EQ(words.texts(), 4 * page_words);
    words.set(7, "y");
    EXPECT_EQ(words.texts(), 2U);
    EXPECT_EQ(words[7], "y");
}

TEST(VariedWords, DropUnusedTextsOnceTheyAreEightCharactersForEachWordOfAPage) {
    const std::string text(page_words, 'x');
    varied_words words;
    for (int times = 0; times < 8; ++times) {
        words.set(7, text);
    }
    EXPECT_EQ(words.texts(), 8U);
    words.set(7, "y");
    EXPECT_EQ(words.texts(), 2U);
}

TEST(VariedWords, DropUnusedTextsWhenTheirCharactersHaveDoubled) {
    const std::string text(1000, 'x');
    varied_words words;
    words.set(1, std::string(5000, 'a'));
    for (int times = 0; times < 4; ++times) {
        words.set(7, text);
    }
    EXPECT_EQ(words.texts(), 3U) << "the fourth did not fit: two used texts of 6000 characters were kept";
    for (int times = 0; times < 5; ++times) {
        words.set(7, text);
    }
    EXPECT_EQ(words.texts(), 8U) << "12000 characters";
    words.set(7, "y");
    EXPECT_EQ(words.texts(), 3U);
    EXPECT_EQ(words[1], std::string(5000, 'a'));
    EXPECT_EQ(words[7], "y");
}

TEST(VariedWords, AssignedWithoutMemoryStayAsTheyWere) {
    const std::string_view values[] = {"1", {}, "3", "four", "5"};
    for (std::size_t long_text = 0; long_text < 5; ++long_text) {
        const std::string text(10000, 'x');
        std::string_view texts[5];
        std::copy_n(values, 5, texts);
        texts[long_text] = text;
        const pattern_ref pattern = word_pattern::repeating(100, texts, 5);
        bool failed = true;
        for (std::size_t number = 1; failed; ++number) {
            varied_words words;
            words.set(10, "old");
            {
                const failing_allocation failing(number);
                try {
                    words.assign(10, 12, *pattern, 100);
                } catch (const std::bad_alloc&) {
                }
                failed = failing_allocation::happened();
            }
            EXPECT_EQ(words[10], failed ? "old" : texts[0]);
            EXPECT_EQ(words.has(12), !failed);
        }
    }
}

#if SIZE_MAX > UINT32_MAX // else no text has these lengths
TEST(VariedWords, AreRefusedBeyondTheirLimit) {
    // The lengths are examined before any character is read.
    const std::string text = "x";
    constexpr std::size_t longest = std::numeric_limits<std::uint32_t>::max();
    varied_words words;
    words.set(0, text);
    EXPECT_THROW(words.set(1, {text.data(), longest}), std::length_error);
    EXPECT_FALSE(words.has(1));
    const failing_large_allocations failing(longest);
    EXPECT_THROW(words.set(1, {text.data(), longest - 1}), std::bad_alloc);
}
#endif

} // namespace

// A cycle at words that do not repeat, and a pattern of texts that are too long together.

#include "kvr/memory/store/word_pattern.h"
#include "kvr/memory/store/word_store.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

TEST(WordStoreCycle, OfAWordInAPageIsThatWordWithoutAPeriod) {
    kvr::word_store words;
    words.resize(10000, "0");
    words.set(5000, "A");
    words.set(7000, "B");
    EXPECT_EQ(words[7000], "B");
    const kvr::word_cycle cycle = words.cycle_at(5000);
    EXPECT_EQ(cycle.first, 5000U);
    EXPECT_EQ(cycle.last, 5000U);
    EXPECT_EQ(cycle.period, 0U);
}

TEST(WordPatternLength, OfAllTextsTogetherIsLimited) {
    constexpr std::size_t longest = std::numeric_limits<std::uint32_t>::max();
    // The lengths are added up before any character is read.
    const std::string text = "x";
    const std::string_view values[] = {{text.data(), longest}, {text.data(), 1}};
    EXPECT_THROW(static_cast<void>(kvr::word_pattern::repeating(0, values, 2)), std::length_error);
}

} // namespace

#include "kvrimage/picture/islands.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

using gap_list = std::vector<address_range>;

constexpr picture_room hundred_units = {100, 10, 3};

TEST(Islands, SetWordsAreCountedAndGapsFound) {
    const image_words words = words_of(100, {{5, 9, {"1", "2"}}, {50, 50, {"3"}}});
    const set_words all = set_words_of(words, 0, 99);
    EXPECT_EQ(all.count, 6);
    EXPECT_THAT(all.gaps, ElementsAre(address_range{0, 4}, address_range{10, 49}, address_range{51, 99}));
    const set_words part = set_words_of(words, 8, 50);
    EXPECT_EQ(part.count, 3);
    EXPECT_THAT(part.gaps, ElementsAre(address_range{10, 49}));
    EXPECT_THAT(set_words_of(words, 20, 30).gaps, ElementsAre(address_range{20, 30}));
}

TEST(Islands, TheLongestGapsAreKept) {
    image_words words(1'000'000);
    for (std::uint64_t index = 0; index < 200; ++index) {
        words.set(index * (index + 1) / 2 * 10, "1"); // each gap is longer than the previous one
    }
    const set_words found = set_words_of(words, 0, words.size() - 1);
    EXPECT_EQ(found.count, 200);
    ASSERT_EQ(found.gaps.size(), set_words::most_gaps);
    EXPECT_EQ(found.gaps.front(), (address_range{93'161, 94'529})); // after the word 136
    EXPECT_EQ(found.gaps.back(), (address_range{199'001, 999'999}));
}

TEST(Islands, CommonGapsAreThoseOfBoth) {
    EXPECT_THAT(common_gaps({{0, 9}, {20, 40}}, {{5, 25}, {30, 30}, {50, 60}}),
                ElementsAre(address_range{5, 9}, address_range{20, 25}, address_range{30, 30}));
    EXPECT_THAT(common_gaps({}, {{5, 25}}), ElementsAre());
}

TEST(Islands, LongGapsAreLeftOut) {
    EXPECT_EQ(shown_stretches(0, 9999, {20, {{10, 4999}, {5010, 9998}}}, hundred_units),
              (std::vector<shown_stretch>{{0, 9, 0, 40}, {5000, 5009, 43, 40}, {9999, 9999, 86, 14}}));
}

TEST(Islands, TheFirstAndTheLastWordAreShown) {
    EXPECT_EQ(shown_stretches(0, 9999, {10, {{0, 4999}, {5010, 9999}}}, hundred_units),
              (std::vector<shown_stretch>{{0, 0, 0, 15}, {5000, 5009, 18, 63}, {9999, 9999, 84, 16}}));
}

TEST(Islands, NoGapIsLeftOutThatIsNotFourTimesAsLong) {
    const std::vector<shown_stretch> whole = {{0, 999, 0, 100}};
    EXPECT_EQ(shown_stretches(0, 999, {200, {{200, 999}}}, hundred_units), whole);
    EXPECT_EQ(shown_stretches(0, 999, {199, {{199, 998}}}, hundred_units).size(), 2);
}

TEST(Islands, NothingIsLeftOutWhereEachWordHasRoomOrNoneIsSet) {
    EXPECT_EQ(shown_stretches(0, 99, {1, {{1, 99}}}, hundred_units),
              (std::vector<shown_stretch>{{0, 99, 0, 100}}));
    EXPECT_EQ(shown_stretches(0, 999, {0, {{0, 999}}}, hundred_units),
              (std::vector<shown_stretch>{{0, 999, 0, 100}}));
}

TEST(Islands, TheLongestGapsAreLeftOutWhereThereIsRoomForFew) {
    const set_words set{4, {{1, 99}, {101, 399}, {401, 998}}};
    EXPECT_EQ(shown_stretches(0, 999, set, {30, 10, 3}),
              (std::vector<shown_stretch>{{0, 400, 0, 16}, {999, 999, 19, 11}}));
    EXPECT_EQ(shown_stretches(0, 999, set, {22, 10, 3}), (std::vector<shown_stretch>{{0, 999, 0, 22}}));
    EXPECT_EQ(shown_stretches(0, 999, set, {8, 10, 3}), (std::vector<shown_stretch>{{0, 999, 0, 8}}));
}

/// Expects that a plain walk over the words finds the same as @p found.
void expect_agreement(const image_words& words, std::uint64_t first, std::uint64_t last,
                      const set_words& found) {
    std::uint64_t count = 0;
    gap_list gaps;
    for (std::uint64_t offset = first; offset <= last; ++offset) {
        if (!words[offset].empty()) {
            ++count;
        } else if (!gaps.empty() && gaps.back().last + 1 == offset) {
            gaps.back().last = offset;
        } else {
            gaps.push_back({offset, offset});
        }
    }
    EXPECT_EQ(found.count, count);
    EXPECT_EQ(found.gaps, gaps);
}

TEST(Islands, EverySetWordIsInOneColumn) {
    std::mt19937 random(11);
    for (int round = 0; round < 300; ++round) {
        const std::uint64_t depth = random() % 3000 + 1;
        image_words words(depth);
        for (std::uint32_t island = 0; island < random() % 6; ++island) {
            const std::uint64_t begin = random() % depth;
            words.fill(begin, std::min(begin + random() % 9, depth - 1), {"1", "2", "3"});
        }
        const std::uint64_t first = random() % depth;
        const std::uint64_t last = first + random() % (depth - first);
        const set_words set = set_words_of(words, first, last);
        expect_agreement(words, first, last, set);
        const picture_room room{static_cast<std::uint32_t>(random() % 200 + 20), 8, 3};
        const column_grid grid(shown_stretches(first, last, set, room));
        EXPECT_LE(grid.room(), room.units);
        std::vector<std::uint32_t> columns_of_word(depth);
        std::uint64_t counted = 0;
        for (std::uint32_t column = 0; column < grid.columns(); ++column) {
            for (std::uint64_t offset = grid.first_of(column); offset <= grid.last_of(column); ++offset) {
                ++columns_of_word[offset];
                EXPECT_EQ(grid.column_of(offset), column);
                counted += words[offset].empty() ? 0U : 1U;
            }
        }
        EXPECT_EQ(counted, set.count) << round;
        EXPECT_LE(std::ranges::max(columns_of_word), 1) << round;
        EXPECT_EQ(columns_of_word[first], 1);
        EXPECT_EQ(columns_of_word[last], 1);
    }
}

} // namespace

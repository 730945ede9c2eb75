#include "kvrimage/compare/difference_figures.h"
#include "kvrimage/image/united_ranges.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

difference_figures figures_of(const memory_image& left, const memory_image& right) {
    difference_counter counter(left, right);
    for_each_difference(left, right, [&counter](const difference& found) { counter.take(found); });
    return counter.figures();
}

TEST(DifferenceFigures, OfEqualMemoriesAreZero) {
    const difference_figures found = figures_of(memory_image(3, 4), memory_image(3, 4));
    EXPECT_EQ(found.words, 0);
    EXPECT_EQ(found.bits, 0);
    EXPECT_THAT(found.words_by_bit, ElementsAre(0, 0, 0));
    EXPECT_THAT(found.blocks, IsEmpty());
}

TEST(DifferenceFigures, CountWordsRangesAndBits) {
    memory_image left(4, 64);
    memory_image right(4, 64);
    left.fill({0, 9}, std::array{word::of(0b0011, 4)});
    right.fill({0, 9}, std::array{word::of(0b0101, 4)});
    left.fill({62, 63}, std::array{word::of(1, 4)});
    right.set(40, word::of(1, 4));
    const difference_figures found = figures_of(left, right);
    EXPECT_EQ(found.words, 13);
    EXPECT_EQ(found.ranges, 3);
    EXPECT_EQ(found.left_only, 2);
    EXPECT_EQ(found.right_only, 1);
    EXPECT_EQ(found.bits, 20);
    EXPECT_THAT(found.words_by_bit, ElementsAre(0, 10, 10, 0));
    EXPECT_THAT(found.blocks, ElementsAre(block_figures{{0, 3}, 4, 8}, block_figures{{4, 7}, 4, 8},
                                          block_figures{{8, 11}, 2, 4}, block_figures{{40, 43}, 1, 0},
                                          block_figures{{60, 63}, 2, 0}));
}

TEST(DifferenceFigures, AWordOfFewerBitsHasZerosAboveIt) {
    memory_image left(2, 1);
    memory_image right(5, 1);
    left.set(0, word::of(3, 2));
    right.set(0, word_of_digits("1X011"));
    const difference_figures found = figures_of(left, right);
    EXPECT_EQ(found.bits, 2);
    EXPECT_THAT(found.words_by_bit, ElementsAre(0, 0, 0, 1, 1));
}

TEST(DifferenceFigures, BlocksAreAsSmallAsSixteenOfThemPermit) {
    struct depth_and_block {
        std::uint64_t depth;
        std::uint64_t block;
    };
    for (const auto& [depth, block] : {depth_and_block{16, 1}, {17, 2}, {32, 2}, {33, 4}}) {
        memory_image left(8, depth);
        left.set(0, word::of(1, 8));
        left.set(depth - 1, word::of(1, 8));
        const difference_figures found = figures_of(left, memory_image(8, depth));
        ASSERT_EQ(found.blocks.size(), 2U);
        EXPECT_EQ(found.blocks[0].addresses, (address_range{0, block - 1})) << depth;
        EXPECT_EQ(found.blocks[1].addresses.first, (depth - 1) / block * block) << depth;
    }
}

TEST(DifferenceFigures, BlocksAreCutToTheMemories) {
    constexpr std::uint64_t highest = std::numeric_limits<std::uint64_t>::max();
    memory_image left(8, 100, highest - 99);
    memory_image right(8, 100, highest - 99);
    left.fill_unset(word::of(1, 8));
    right.fill_unset(word::of(0, 8));
    const difference_figures found = figures_of(left, right);
    EXPECT_EQ(found.blocks.front(), (block_figures{{highest - 99, highest - 96}, 4, 4}));
    EXPECT_EQ(found.blocks.back(), (block_figures{{highest - 7, highest}, 8, 8}));
    EXPECT_EQ(found.blocks.size(), 13);
}

TEST(DifferenceFigures, BillionsOfAddressesCostNothing) {
    memory_image left(8, deepest_memory);
    memory_image right(8, deepest_memory);
    left.fill_unset(word::of(1, 8));
    right.fill_unset(word::of(0, 8));
    const difference_figures found = figures_of(left, right);
    EXPECT_EQ(found.bits, deepest_memory);
    EXPECT_EQ(found.blocks.size(), 16);
    EXPECT_EQ(found.blocks[3], (block_figures{{3ULL << 28U, (4ULL << 28U) - 1}, 1U << 28U, 1U << 28U}));
}

TEST(ForEachDifference, AtSomeAddressesIsCutToThem) {
    memory_image left(8, deepest_memory);
    const memory_image right(8, 16, 8);
    left.fill_unset(word::of(1, 8));
    const std::array<address_range, 2> where = {{{2, 3}, {10, 10}}};
    std::vector<address_range> found;
    for_each_difference(left, right, where, [&found](const difference& one) {
        EXPECT_EQ(one.left, word::of(1, 8));
        EXPECT_FALSE(one.right);
        found.push_back(one.addresses);
    });
    EXPECT_THAT(found, ElementsAre(where[0], where[1]));
}

TEST(ForEachDifference, AtAddressesOutsideOfBothMemoriesFindsNone) {
    memory_image left(8, 4);
    left.set(0, word::of(1, 8));
    const address_range where = {4, std::numeric_limits<std::uint64_t>::max()};
    for_each_difference(left, memory_image(8, 4), std::span(&where, 1),
                        [](const difference& /*one*/) { FAIL(); });
}

TEST(RangesWithout, LeavesOutHolesOfAnyKind) {
    constexpr std::uint64_t highest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_THAT(ranges_without({{0, 9}}, {}), ElementsAre(address_range{0, 9}));
    EXPECT_THAT(ranges_without({{0, 9}}, {{0, 9}}), IsEmpty());
    EXPECT_THAT(ranges_without({{5, 9}}, {{0, 5}, {9, 12}}), ElementsAre(address_range{6, 8}));
    EXPECT_THAT(ranges_without({{0, 9}, {20, 29}}, {{5, 24}}),
                ElementsAre(address_range{0, 4}, address_range{25, 29}));
    EXPECT_THAT(ranges_without({{0, highest}}, {{3, 4}, {highest, highest}}),
                ElementsAre(address_range{0, 2}, address_range{5, highest - 1}));
    EXPECT_THAT(ranges_without({{0, highest}, {0, 3}, {5, 6}}, {}), ElementsAre(address_range{0, highest}));
}

TEST(DifferenceFigures, OfRandomMemoriesAreThoseOfAPlainComparison) {
    memory_maker maker(31);
    for (int round = 0; round < rounds(150); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(70));
        const std::uint64_t depth = 1 + maker.below(200);
        const unsigned dont_care = round % 3 == 0 ? 9 : 0;
        const memory_image left = maker.memory(width, depth, dont_care, 30);
        const memory_image right = maker.memory(width, depth, dont_care, 30);
        const std::uint64_t hole = 30 + maker.below(depth);
        const std::vector<address_range> where =
            ranges_without({{30, 30 + maker.below(depth)}}, {{hole, hole + maker.below(9)}});
        difference_counter counter(left, right);
        for_each_difference(left, right, where, [&counter](const difference& one) { counter.take(one); });
        difference_figures expected;
        expected.words_by_bit.resize(width);
        const plain_words left_words = plain_words_of(left);
        const plain_words right_words = plain_words_of(right);
        for (std::size_t at = 0; at < depth; ++at) {
            const bool is_compared = std::ranges::any_of(where, [at](const address_range& range) {
                return range.first <= 30 + at && 30 + at <= range.last;
            });
            if (!is_compared || left_words[at] == right_words[at]) {
                continue;
            }
            ++expected.words;
            expected.left_only += right_words[at] ? 0U : 1U;
            expected.right_only += left_words[at] ? 0U : 1U;
            for (std::size_t bit = 0; left_words[at] && right_words[at] && bit < width; ++bit) {
                const bool differs =
                    (*left_words[at])[width - 1 - bit] != (*right_words[at])[width - 1 - bit];
                expected.bits += differs ? 1U : 0U;
                expected.words_by_bit[bit] += differs ? 1U : 0U;
            }
        }
        const difference_figures& found = counter.figures();
        ASSERT_EQ(found.words, expected.words);
        ASSERT_EQ(found.left_only, expected.left_only);
        ASSERT_EQ(found.right_only, expected.right_only);
        ASSERT_EQ(found.bits, expected.bits);
        ASSERT_EQ(found.words_by_bit, expected.words_by_bit);
        block_figures all = {};
        for (const block_figures& block : found.blocks) {
            all.words += block.words;
            all.bits += block.bits;
        }
        ASSERT_EQ(all.words, expected.words);
        ASSERT_EQ(all.bits, expected.bits);
        ASSERT_LE(found.blocks.size(), difference_figures::most_blocks);
    }
}

} // namespace

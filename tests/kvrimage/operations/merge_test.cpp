#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/operations/merge.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/operations/plain_operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;

/// Words of 8 bits.
memory_image memory_with(std::uint64_t depth, const std::map<std::uint64_t, std::uint64_t>& words,
                         std::uint64_t base = 0) {
    memory_image image(8, depth, base);
    for (const auto& [address, value] : words) {
        image.set(address, word::of(value, 8));
    }
    return image;
}

TEST(Merged, TakesTheWordsOfAllMemories) {
    const merge_result result = merged(
        std::array{memory_with(4, {{0, 1}, {1, 2}}), memory_with(8, {{2, 3}, {6, 4}})}, overlap_rule::refuse);
    EXPECT_EQ(result.image, memory_with(8, {{0, 1}, {1, 2}, {2, 3}, {6, 4}}));
    EXPECT_EQ(result.parts[0].words, 2U);
    EXPECT_EQ(result.parts[0].ranges, (std::vector<address_range>{{0, 1}}));
    EXPECT_EQ(result.parts[1].ranges, (std::vector<address_range>{{2, 2}, {6, 6}}));
    EXPECT_TRUE(result.overlaps.empty());
}

TEST(Merged, HasTheAddressesOfAllMemories) {
    const merge_result result = merged(
        std::array{memory_with(4, {{0x13, 1}}, 0x10), memory_with(2, {{9, 2}}, 8)}, overlap_rule::refuse);
    EXPECT_EQ(result.image, memory_with(12, {{9, 2}, {0x13, 1}}, 8));
}

const std::array overlapping_memories = {memory_with(4, {{0, 1}, {1, 2}, {2, 3}}),
                                         memory_with(4, {{1, 2}, {2, 9}, {3, 4}})};

TEST(Merged, IsNoneWhereNoOverlapIsAllowed) {
    const merge_result result = merged(overlapping_memories, overlap_rule::refuse);
    EXPECT_FALSE(result.image);
    EXPECT_EQ(result.overlaps, (std::vector<merge_overlap>{{{1, 2}, 0, 1, 2}}));
    EXPECT_EQ(result.overlap_count, 1U);
}

TEST(Merged, IsNoneWhereWordsMustBeTheSameAndAreNot) {
    EXPECT_FALSE(merged(overlapping_memories, overlap_rule::same).image);
    const merge_result same =
        merged(std::array{memory_with(4, {{1, 2}}), memory_with(4, {{1, 2}})}, overlap_rule::same);
    EXPECT_EQ(same.image, memory_with(4, {{1, 2}}));
    EXPECT_EQ(same.overlaps, (std::vector<merge_overlap>{{{1, 1}, 0, 1, std::nullopt}}));
}

TEST(Merged, NamesTheFirstDifferenceWhereverItIs) {
    memory_image zeros(8, 4000);
    zeros.fill({0, 3999}, std::vector{word::of(0, 8)});
    const memory_image bytes = image_of_bytes(std::string(3000, '\0') + "\1\2" + std::string(998, '\0'));
    EXPECT_EQ(merged(std::array{zeros, bytes}, overlap_rule::first).overlaps,
              (std::vector<merge_overlap>{{{0, 3999}, 0, 1, 3000}}));
}

TEST(Merged, TakesMemoriesThatAreHeldAsBytesWithGaps) {
    const auto held = [](const std::string& bytes, std::uint64_t first) {
        const auto keeper = std::make_shared<std::string>(bytes);
        std::vector<byte_words::block> blocks;
        for (std::size_t at = 0; at < keeper->size(); ++at) {
            blocks.push_back({first + 4 * at, std::string_view(*keeper).substr(at, 1)});
        }
        return memory_image(
            8, std::make_unique<image_words>(16, byte_words(std::move(blocks), 8, byte_order::big, keeper)));
    };
    const merge_result result =
        merged(std::array{held("\1\2\3", 0), held("\4\5\6", 2)}, overlap_rule::refuse);
    EXPECT_EQ(result.image, memory_with(16, {{0, 1}, {2, 4}, {4, 2}, {6, 5}, {8, 3}, {10, 6}}));
    const merge_result same = merged(std::array{held("\1\2\3", 0), held("\1\2\3", 0)}, overlap_rule::same);
    EXPECT_EQ(same.image, memory_with(16, {{0, 1}, {4, 2}, {8, 3}}));
}

TEST(Merged, TakesTheFirstWord) {
    const merge_result result = merged(overlapping_memories, overlap_rule::first);
    EXPECT_EQ(result.image, memory_with(4, {{0, 1}, {1, 2}, {2, 3}, {3, 4}}));
    EXPECT_EQ(result.parts[1].words, 1U);
}

TEST(Merged, TakesTheLastWord) {
    const merge_result result = merged(overlapping_memories, overlap_rule::last);
    EXPECT_EQ(result.image, memory_with(4, {{0, 1}, {1, 2}, {2, 9}, {3, 4}}));
    EXPECT_EQ(result.parts[0].words, 1U);
    EXPECT_EQ(result.overlaps, (std::vector<merge_overlap>{{{1, 2}, 1, 0, 2}}));
}

TEST(Merged, RefusesNoMemoryAndOtherWidths) {
    EXPECT_THROW(static_cast<void>(merged({}, overlap_rule::first)), std::invalid_argument);
    try {
        static_cast<void>(merged(std::array{memory_image(8, 1), memory_image(9, 1)}, overlap_rule::first));
        FAIL();
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "memory 1 has words of 9 bits, memory 0 of 8");
    }
}

TEST(Merged, RefusesAddressesThatAreTooFarApart) {
    EXPECT_THROW(static_cast<void>(merged(std::array{memory_image(8, 1), memory_image(8, 1, deepest_memory)},
                                          overlap_rule::first)),
                 std::out_of_range);
}

TEST(Merged, KeepsTheFirstRangesAndOverlapsOnly) {
    memory_image scattered(8, 1000);
    for (std::uint64_t address = 0; address < 1000; address += 3) {
        scattered.set(address, word::of(1, 8));
    }
    memory_image all(8, 1000);
    for (std::uint64_t address = 0; address < 1000; ++address) {
        all.set(address, word::of(address % 250, 8)); // no runs: several stretches at the end
    }
    all.fill({998, 999}, std::array{word::of(7, 8)});
    scattered.fill({996, 999}, std::array{word::of(1, 8), word::of(2, 8)});
    const merge_result result = merged(std::array{scattered, all}, overlap_rule::first);
    EXPECT_EQ(result.overlap_count, 333U);
    EXPECT_EQ(result.overlaps.size(), most_merge_ranges);
    EXPECT_EQ(result.overlaps[1], (merge_overlap{{3, 3}, 0, 1, 3}));
    EXPECT_EQ(result.parts[1].ranges.size(), most_merge_ranges);
    EXPECT_EQ(result.parts[1].words, 1000U - 336U);
}

TEST(Merged, CountsALongOverlapOnceWhereItIsNotKept) {
    memory_image all(8, 8000);
    memory_image most(8, 8000);
    for (std::uint64_t address = 0; address < 8000; ++address) {
        all.set(address, word::of(address % 250, 8));
        if (address % 2 == 0 || address > 400) {
            most.set(address, word::of(address % 250, 8));
        }
    }
    const merge_result result = merged(std::array{all, most}, overlap_rule::same);
    EXPECT_EQ(result.image, all);
    EXPECT_EQ(result.overlap_count, 201U); // 0, 2 ... 398, and 400..7999
    EXPECT_EQ(result.overlaps.back(), (merge_overlap{{198, 198}, 0, 1, std::nullopt}));
}

TEST(Merged, TakesFillsOfBillionsAtOnce) {
    memory_image left(8, deepest_memory);
    left.fill({0, deepest_memory - 1}, std::array{word::of(1, 8), word::of(2, 8)});
    memory_image right(8, deepest_memory);
    right.fill({5, deepest_memory - 2},
               std::array{word::of(2, 8), word::of(1, 8), word::of(2, 8), word::of(1, 8)});
    const merge_result result = merged(std::array{left, right}, overlap_rule::same);
    EXPECT_EQ(result.image, left);
    EXPECT_EQ(result.overlaps, (std::vector<merge_overlap>{{{5, deepest_memory - 2}, 0, 1, std::nullopt}}));
}

TEST(Merged, OfRandomMemoriesIsThatOfTheirWords) {
    memory_maker maker(7);
    for (int turn = 0; turn < 25; ++turn) {
        std::vector<memory_image> parts;
        for (std::uint64_t count = 1 + maker.below(4); count != 0; --count) {
            parts.push_back(maker.memory(5, 1100, 0, 100));
            const std::uint64_t first = 100 + maker.below(1100);
            parts.back().unset({first, std::min<std::uint64_t>(1199, first + 500)});
        }
        if (maker.below(2) == 0) {
            parts.push_back(parts[0]);
        }
        for (const auto rule :
             {overlap_rule::refuse, overlap_rule::same, overlap_rule::first, overlap_rule::last}) {
            const plain_merge expected = plainly_merged(parts, rule);
            const merge_result result = merged(parts, rule);
            ASSERT_EQ(result.overlap_count != 0, expected.overlaps);
            ASSERT_EQ(!result.image, (rule == overlap_rule::refuse && expected.overlaps) ||
                                         (rule == overlap_rule::same && expected.differs));
            for (std::size_t index = 0; index < parts.size(); ++index) {
                ASSERT_EQ(result.parts[index].words, expected.taken[index]);
            }
            if (result.image) {
                ASSERT_EQ(plain_words_of(*result.image), expected.words);
            }
        }
    }
}

TEST(Merged, EndsWithTheLastAddressOf64Bits) {
    constexpr std::uint64_t highest = ~std::uint64_t{0};
    const std::array parts = {memory_image(8, 1, highest), memory_with(1, {{highest, 5}}, highest)};
    EXPECT_EQ(merged(parts, overlap_rule::refuse).image, parts[1]);
    const std::array equal = {parts[1], parts[1]};
    EXPECT_EQ(merged(equal, overlap_rule::same).image, parts[1]);
}

} // namespace

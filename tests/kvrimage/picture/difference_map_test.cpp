#include "kvrimage/picture/difference_map.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace kvrimage;

difference difference_of_kind(std::uint64_t first, std::uint64_t last, bool has_left, bool has_right) {
    difference found{{first, last}, std::nullopt, std::nullopt};
    if (has_left) {
        found.left = word::of(1, 8);
    }
    if (has_right) {
        found.right = word::of(2, 8);
    }
    return found;
}

TEST(DifferenceMap, EachKindIsCountedForItself) {
    difference_map map(column_grid(0, 9, 5));
    map.take(difference_of_kind(100, 104, true, true), {0, 4});
    map.take(difference_of_kind(105, 105, true, false), {5, 5});
    map.take(difference_of_kind(106, 109, false, true), {6, 9});
    EXPECT_EQ(map.total(difference_kind::changed), 5);
    EXPECT_EQ(map.total(difference_kind::left_only), 1);
    EXPECT_EQ(map.total(difference_kind::right_only), 4);
    EXPECT_EQ(map.count(difference_kind::changed, 1), 2);
    EXPECT_EQ(map.share(difference_kind::changed, 1), 1);
    EXPECT_EQ(map.share(difference_kind::changed, 2), 0.5);
    EXPECT_EQ(map.share(difference_kind::left_only, 2), 0.5);
    EXPECT_EQ(map.share(difference_kind::right_only, 0), 0);
}

memory_image random_memory(std::mt19937& random, std::uint64_t base) {
    memory_image image(8, random() % 100 + 1, base);
    for (std::uint64_t address = base; address <= image.last_address(); ++address) {
        if (random() % 3 != 0) {
            image.set(address, word::of(random() % 3, 8));
        }
    }
    return image;
}

std::optional<word> word_or_gap_at(const memory_image& image, std::uint64_t address) {
    return address >= image.base() && address <= image.last_address() ? image[address] : std::nullopt;
}

TEST(DifferenceMap, CountsAgreeWithALookAtEachAddress) {
    std::mt19937 random(4);
    for (int round = 0; round < 100; ++round) {
        const memory_image left = random_memory(random, random() % 50);
        const memory_image right = random_memory(random, random() % 50);
        const std::uint64_t first = std::min(left.base(), right.base());
        const std::uint64_t last = std::max(left.last_address(), right.last_address());
        const column_grid grid(0, last - first, static_cast<std::uint32_t>(random() % 20 + 1));
        difference_map map(grid);
        for_each_difference(left, right, [&](const difference& found) {
            map.take(found, {found.addresses.first - first, found.addresses.last - first});
        });
        std::vector<std::array<std::uint64_t, 3>> expected(grid.columns());
        for (std::uint64_t address = first; address <= last; ++address) {
            const std::optional<word> before = word_or_gap_at(left, address);
            const std::optional<word> after = word_or_gap_at(right, address);
            if (before != after) {
                ++expected[grid.column_of(address - first)][!after ? 1 : !before ? 2 : 0];
            }
        }
        for (const difference_kind kind : difference_kinds) {
            std::uint64_t total = 0;
            for (std::uint32_t column = 0; column < grid.columns(); ++column) {
                EXPECT_EQ(map.count(kind, column), expected[column][static_cast<std::size_t>(kind)]) << round;
                total += map.count(kind, column);
            }
            EXPECT_EQ(map.total(kind), total);
        }
    }
}

} // namespace

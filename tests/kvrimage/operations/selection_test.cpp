#include "kvrimage/operations/selection.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>

namespace {

using namespace kvrimage;

constexpr std::uint64_t highest = std::numeric_limits<std::uint64_t>::max();

memory_image memory_of_words_at(std::uint64_t depth, const std::vector<std::uint64_t>& addresses,
                                std::uint64_t base = 0) {
    memory_image image(64, depth, base);
    for (const std::uint64_t address : addresses) {
        image.set(address, word::of(address, 64));
    }
    return image;
}

TEST(Only, KeepsTheWordsOfTheRanges) {
    const memory_image image = memory_of_words_at(16, {1, 2, 3, 8, 9, 15});
    EXPECT_EQ(only(image, std::array{address_range{2, 4}, address_range{9, highest}}),
              memory_of_words_at(16, {2, 3, 9, 15}));
    EXPECT_EQ(only(image, std::array{address_range{16, 20}}), memory_of_words_at(16, {}));
    EXPECT_EQ(only(image, {}), memory_of_words_at(16, {}));
}

TEST(Only, RefusesARangeThatEndsBeforeItBegins) {
    EXPECT_THROW(static_cast<void>(only(memory_image(8, 4), std::array{address_range{3, 2}})),
                 std::invalid_argument);
}

TEST(Except, TakesTheWordsOfTheRangesAway) {
    const memory_image image = memory_of_words_at(16, {101, 102, 103, 108}, 100);
    EXPECT_EQ(except(image, std::array{address_range{0, 101}, address_range{103, 105}}),
              memory_of_words_at(16, {102, 108}, 100));
    EXPECT_EQ(except(image, std::array{address_range{0, 99}}), image);
    EXPECT_THROW(static_cast<void>(except(image, std::array{address_range{3, 2}})), std::invalid_argument);
}

TEST(Moved, MovesAllWords) {
    memory_image expected(64, 16);
    expected.set(0, word::of(8, 64));
    expected.set(4, word::of(12, 64));
    EXPECT_EQ(moved(memory_of_words_at(16, {8, 12}), 8, 0), expected);
}

TEST(Moved, MakesTheMemoryDeeperWhereItMust) {
    const memory_image image = moved(memory_of_words_at(16, {8, 12}), 8, 14);
    EXPECT_EQ(image.base(), 0U);
    EXPECT_EQ(image.depth(), 19U);
    EXPECT_EQ(image[18], word::of(12, 64));
    EXPECT_EQ(image.count_set(), 2U);
}

TEST(Moved, BelowTheBaseMovesTheBaseToo) {
    const memory_image image = moved(memory_of_words_at(16, {104}, 100), 104, 98);
    EXPECT_EQ(image.base(), 98U);
    EXPECT_EQ(image.last_address(), 115U);
    EXPECT_EQ(image[98], word::of(104, 64));
}

TEST(Moved, AnEmptyMemoryStaysAsItIs) {
    EXPECT_EQ(moved(memory_image(8, 4), 0, highest), memory_image(8, 4));
}

TEST(Moved, RefusesAddressesThatDoNotExist) {
    const memory_image image = memory_of_words_at(16, {3, 12});
    EXPECT_THROW(static_cast<void>(moved(image, 8, 0)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(moved(image, 0, highest)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(moved(image, 12, deepest_memory)), std::out_of_range);
    EXPECT_EQ(moved(image, 12, deepest_memory - 1).depth(), deepest_memory);
}

TEST(WithDepth, KeepsTheWords) {
    const memory_image image = memory_of_words_at(16, {101, 107}, 100);
    EXPECT_EQ(with_depth(image, 8), memory_of_words_at(8, {101, 107}, 100));
    EXPECT_EQ(with_depth(image, 99), memory_of_words_at(99, {101, 107}, 100));
    EXPECT_EQ(with_depth(memory_image(8, 16), 1), memory_image(8, 1));
    EXPECT_THROW(static_cast<void>(with_depth(image, 7)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(with_depth(memory_image(8, 16), 0)), std::invalid_argument);
}

TEST(Selection, OfRandomMemoriesIsThatOfTheWords) {
    memory_maker maker(2);
    for (int round = 0; round < rounds(12); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(40));
        const memory_image image = maker.memory(width, 3000, 20, 50);
        const std::uint64_t first = maker.below(3100);
        const std::uint64_t last = first + maker.below(1000);
        const std::array ranges = {address_range{first, last}, address_range{last + 5, last + 90}};
        plain_words inside = plain_words_of(image);
        plain_words outside = inside;
        for (std::uint64_t offset = 0; offset < inside.size(); ++offset) {
            const std::uint64_t address = 50 + offset;
            const bool is_selected =
                (address >= first && address <= last) || (address >= last + 5 && address <= last + 90);
            (is_selected ? outside : inside)[offset].reset();
        }
        ASSERT_EQ(plain_words_of(only(image, ranges)), inside);
        ASSERT_EQ(plain_words_of(except(image, ranges)), outside);
        const std::uint64_t to = 50 + maker.below(5000);
        const memory_image there = moved(image, 50, to);
        for (std::uint64_t offset = 0; offset < 3000; ++offset) {
            ASSERT_EQ(to + offset <= there.last_address() ? there[to + offset] : std::nullopt,
                      image[50 + offset]);
        }
        ASSERT_EQ(there.count_set(), image.count_set());
    }
}

TEST(Selection, TakesFillsOfBillionsAtOnceAcrossTheMiddle) {
    memory_image image(8, deepest_memory);
    image.fill({5, deepest_memory - 1}, std::array{word::of(1, 8), word::of(2, 8), word::of(3, 8)});
    constexpr std::uint64_t middle = deepest_memory / 2;
    const memory_image kept = only(image, std::array{address_range{6, middle + 9}});
    EXPECT_EQ(kept.count_set(), middle + 4);
    for (const std::uint64_t address : {std::uint64_t{6}, middle - 1, middle, middle + 1, middle + 9}) {
        EXPECT_EQ(kept[address], image[address]) << address;
    }
    const memory_image there = moved(kept, 6, 0);
    EXPECT_EQ(there[middle - 2], kept[middle + 4]);
    EXPECT_EQ(there.bounds()->last, middle + 3);
}

TEST(Selection, MovesWordsOfPagesAcrossTheMiddle) {
    constexpr std::uint64_t middle = deepest_memory / 2;
    memory_image image(16, 4096);
    for (std::uint64_t address = 0; address < 4096; ++address) {
        image.set(address, word::of(address * 7 % 65536, 16));
    }
    const memory_image there = moved(image, 0, middle - 1500);
    for (std::uint64_t address = 0; address < 4096; ++address) {
        ASSERT_EQ(there[middle - 1500 + address], image[address]);
    }
}

TEST(WithDepth, RefusesAddressesBeyond64Bits) {
    EXPECT_THROW(static_cast<void>(with_depth(memory_image(8, 1, highest), 2)), std::invalid_argument);
    EXPECT_EQ(with_depth(memory_image(8, 1, highest - 1), 2).last_address(), highest);
}

} // namespace

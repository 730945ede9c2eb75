#include "kvrimage/picture/bit_map.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace kvrimage;

bit_map map_of(const image_words& words, std::uint32_t width, std::uint32_t columns, std::uint32_t rows) {
    bit_map map(column_grid(0, words.size() - 1, columns), width, rows);
    take_all(words, map);
    return map;
}

/// A word of 68 bits with @p digit as its lowest hexadecimal digit.
std::string word_ending_in(char digit) {
    return std::string(16, '0') + digit;
}

TEST(BitMap, RowsCountFromTheLeastSignificantBit) {
    const std::string word = word_ending_in('2');
    const bit_map map = map_of(words_of(2, {{0, 0, {word}}}), 68, 2, 128);
    EXPECT_EQ(map.rows(), 68);
    EXPECT_EQ(map.width(), 68);
    EXPECT_EQ(map.shade(0, 0), bit_shade::none);
    EXPECT_EQ(map.shade(1, 0), bit_shade::all);
    EXPECT_EQ(map.shade(67, 0), bit_shade::none);
    EXPECT_EQ(map.shade(1, 1), bit_shade::unset);
}

TEST(BitMap, ShadeFollowsTheShareOfOnes) {
    const std::string one = word_ending_in('1');
    const std::string zero = word_ending_in('0');
    const std::array shades = {bit_shade::none, bit_shade::low,  bit_shade::low,  bit_shade::half,
                               bit_shade::half, bit_shade::half, bit_shade::half, bit_shade::half,
                               bit_shade::high, bit_shade::high, bit_shade::all};
    for (std::uint32_t ones = 0; ones <= 10; ++ones) {
        image_words words = words_of(10, {{0, 9, {zero}}});
        for (std::uint32_t offset = 0; offset < ones; ++offset) {
            words.set(offset, one);
        }
        EXPECT_EQ(map_of(words, 68, 1, 68).shade(0, 0), shades[ones]) << ones;
    }
}

TEST(BitMap, DontCareBitsCountFromHalfOfTheBitsOn) {
    const std::string dont_care = word_ending_in('X');
    const std::string one = word_ending_in('1');
    const std::string in_binary = std::string(67, '0') + 'X';
    EXPECT_EQ(map_of(words_of(2, {{0, 1, {dont_care, one}}}), 68, 1, 68).shade(0, 0), bit_shade::dont_care);
    EXPECT_EQ(map_of(words_of(3, {{0, 2, {dont_care, one, one}}}), 68, 1, 68).shade(0, 0), bit_shade::all);
    const bit_map map = map_of(words_of(1, {{0, 0, {in_binary}}}), 68, 1, 68);
    EXPECT_EQ(map.shade(0, 0), bit_shade::dont_care);
    EXPECT_EQ(map.shade(1, 0), bit_shade::none);
}

TEST(BitMap, RowIsABitOrAByteOrAPowerOfTwoOfBytes) {
    const auto map_for = [](std::uint32_t width, std::uint32_t most_rows) {
        return bit_map(column_grid(0, 0, 1), width, most_rows);
    };
    EXPECT_EQ(map_for(128, 128).row_bits(), 1);
    EXPECT_EQ(map_for(129, 128).row_bits(), 8);
    EXPECT_EQ(map_for(129, 128).rows(), 17);
    EXPECT_EQ(map_for(300, 38).row_bits(), 8);
    EXPECT_EQ(map_for(300, 37).row_bits(), 16);
    EXPECT_EQ(map_for(300, 16).row_bits(), 32);
    EXPECT_EQ(map_for(300, 16).rows(), 10);
    EXPECT_EQ(map_for(1U << 20U, 1).rows(), 1);
}

TEST(BitMap, TopRowHasTheBitsThatAreLeft) {
    const bit_map map = map_of(words_of(1, {{0, 0, {"1" + std::string(16, '0')}}}), 65, 1, 16);
    EXPECT_EQ(map.rows(), 9);
    EXPECT_EQ(map.shade(7, 0), bit_shade::none);
    EXPECT_EQ(map.shade(8, 0), bit_shade::all); // only bit 64
}

TEST(BitMap, RowOfWideWordsIsForSeveralBits) {
    const std::string high_half = std::string(128, 'F') + std::string(128, '0');
    const bit_map map = map_of(words_of(1, {{0, 0, {high_half}}}), 1024, 1, 16);
    EXPECT_EQ(map.rows(), 16);
    EXPECT_EQ(map.row_of(63), 0);
    EXPECT_EQ(map.row_of(64), 1);
    EXPECT_EQ(map.row_of(1023), 15);
    EXPECT_EQ(map.shade(7, 0), bit_shade::none);
    EXPECT_EQ(map.shade(8, 0), bit_shade::all);
}

TEST(BitMap, AgreesWithALookAtEachBit) {
    std::mt19937 random(2);
    for (int round = 0; round < 100; ++round) {
        const auto width = static_cast<std::uint32_t>(random() % 100 + 2);
        const auto most_rows = static_cast<std::uint32_t>(random() % 20 + 1);
        std::uint32_t row_bits = width <= most_rows ? 1 : 8;
        while ((width + row_bits - 1) / row_bits > most_rows) {
            row_bits *= 2;
        }
        const std::uint32_t rows = (width + row_bits - 1) / row_bits;
        const column_grid grid(0, random() % 30, static_cast<std::uint32_t>(random() % 8 + 1));
        image_words words(grid.last() + 1);
        std::vector<std::array<std::uint64_t, 3>> counts(std::size_t{rows} * grid.columns());
        for (std::uint64_t offset = 0; offset <= grid.last(); ++offset) {
            const std::string text = random_text(random, round % 2 == 0 ? "01" : "01X", width);
            words.set(offset, text);
            for (std::uint32_t bit = 0; bit < width; ++bit) {
                const std::size_t row = bit / row_bits;
                ++counts[grid.column_of(offset) * rows + row]
                        [std::string_view("01X").find(text[width - 1 - bit])];
            }
        }
        const bit_map map = map_of(words, width, grid.columns(), most_rows);
        for (std::uint32_t cell = 0; cell < counts.size(); ++cell) {
            const auto& [zeros, ones, dont_cares] = counts[cell];
            const bit_shade expected = dont_cares >= zeros + ones       ? bit_shade::dont_care
                                       : ones == 0                      ? bit_shade::none
                                       : zeros == 0                     ? bit_shade::all
                                       : ones * 10 < (zeros + ones) * 3 ? bit_shade::low
                                       : ones * 10 > (zeros + ones) * 7 ? bit_shade::high
                                                                        : bit_shade::half;
            EXPECT_EQ(map.shade(cell % rows, cell / rows), expected) << round << " " << cell;
        }
    }
}

TEST(BitMap, TicksArePowersOfTwoApartAndHaveTheHighestBitWhereThereIsRoom) {
    const auto ticks_for = [](std::uint32_t width, std::uint32_t most) {
        return bit_map(column_grid(0, 0, 1), width, 16).ticks(most);
    };
    using bits = std::vector<std::uint32_t>;
    EXPECT_EQ(ticks_for(1, 8), (bits{0}));
    EXPECT_EQ(ticks_for(8, 8), (bits{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(ticks_for(128, 8), (bits{0, 16, 32, 48, 64, 80, 96, 112, 127}));
    EXPECT_EQ(ticks_for(66, 9), (bits{0, 8, 16, 24, 32, 40, 48, 56, 64}));
    EXPECT_EQ(ticks_for(1024, 8), (bits{0, 128, 256, 384, 512, 640, 768, 896, 1023}));
}

} // namespace

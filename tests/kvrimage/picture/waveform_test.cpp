#include "kvrimage/picture/waveform.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

waveform waveform_of(const image_words& words, std::uint32_t width, std::uint32_t columns) {
    waveform wave(column_grid(0, words.size() - 1, columns), value_order(width, {}));
    take_all(words, wave);
    return wave;
}

TEST(Waveform, ColumnReachesFromItsLeastToItsGreatestValue) {
    const waveform wave = waveform_of(words_of(6, {{0, 5, {"05", "FF", "10", "07", "07", "07"}}}), 8, 2);
    EXPECT_EQ(wave.columns()[0], (value_bounds{5, 255}));
    EXPECT_EQ(wave.columns()[1], (value_bounds{7, 7}));
    EXPECT_EQ(wave.axis(), (value_axis{0, 255}));
}

TEST(Waveform, WordsWithoutAValueLeaveAGap) {
    const waveform wave = waveform_of(words_of(4, {{0, 1, {"XX", "0000000X"}}, {3, 3, {"09"}}}), 8, 4);
    EXPECT_EQ(wave.columns()[0], std::nullopt);
    EXPECT_EQ(wave.columns()[1], std::nullopt);
    EXPECT_EQ(wave.columns()[2], std::nullopt);
    EXPECT_EQ(wave.columns()[3], (value_bounds{9, 9}));
}

TEST(Waveform, ColumnWithoutAValueIsMarkedWhereWordsHaveDontCareBits) {
    const waveform wave = waveform_of(words_of(6, {{0, 3, {"XX", "01", "0000000X", "X1"}}}), 8, 3);
    EXPECT_FALSE(wave.is_dont_care(0)); // it has a value as well
    EXPECT_TRUE(wave.is_dont_care(1));
    EXPECT_FALSE(wave.is_dont_care(2));
}

TEST(Waveform, AxisWithoutValuesHasAllThatAWordCanHave) {
    EXPECT_EQ(waveform_of(words_of(4, {}), 9, 4).axis(), (value_axis{0, 511}));
    EXPECT_EQ(waveform_of(words_of(4, {}), 64, 4).axis(), (value_axis{0, ~std::uint64_t{0}}));
}

TEST(Waveform, AgreesWithALookAtEachWord) {
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        const auto depth = static_cast<std::uint32_t>(random() % 100 + 1);
        const auto most_columns = static_cast<std::uint32_t>(random() % 20 + 1);
        const column_grid grid(0, depth - 1, most_columns);
        std::vector<std::optional<value_bounds>> expected(grid.columns());
        image_words words(depth);
        for (std::uint32_t offset = 0; offset < depth; ++offset) {
            if (random() % 4 == 0) {
                continue;
            }
            words.set(offset, random_text(random, "08F", 1));
            const std::uint64_t value =
                words[offset] == "F" ? 15 : static_cast<std::uint64_t>(words[offset][0] - '0');
            auto& column = expected[offset / grid.parts().front().words_a_column];
            column = column ? value_bounds{std::min(column->lowest, value), std::max(column->highest, value)}
                            : value_bounds{value, value};
        }
        EXPECT_TRUE(waveform_of(words, 4, most_columns).columns() == expected) << round;
    }
}

} // namespace

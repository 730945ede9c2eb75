#include "kvrimage/picture/occupancy_strip.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

occupancy_strip strip_of(const image_words& words, std::uint32_t columns) {
    occupancy_strip strip(column_grid(0, words.size() - 1, columns));
    take_all(words, strip);
    return strip;
}

TEST(OccupancyStrip, ColumnsHaveTheStateOfTheirWords) {
    const occupancy_strip strip =
        strip_of(words_of(10, {{0, 1, {"1"}}, {2, 3, {"1", "2"}}, {7, 7, {"3"}}, {8, 9, {"4", "5"}}}), 5);
    EXPECT_EQ(strip.stretches(), (std::vector<occupancy_stretch>{{occupancy::run, 0, 1},
                                                                 {occupancy::set, 1, 2},
                                                                 {occupancy::unset, 2, 3},
                                                                 {occupancy::partly_set, 3, 4},
                                                                 {occupancy::set, 4, 5}}));
}

TEST(OccupancyStrip, ColumnsOfOneStateAreOneStretch) {
    EXPECT_EQ(strip_of(words_of(8, {}), 8).stretches(),
              (std::vector<occupancy_stretch>{{occupancy::unset, 0, 8}}));
}

TEST(OccupancyStrip, RunBeginsInTheFirstColumnThatItFills) {
    const occupancy_strip strip = strip_of(words_of(8, {{1, 7, {"1"}}}), 4);
    EXPECT_EQ(strip.columns()[0].state(), occupancy::partly_set);
    EXPECT_FALSE(strip.columns()[0].begins_run);
    EXPECT_TRUE(strip.columns()[1].begins_run);
    EXPECT_FALSE(strip.columns()[2].begins_run);
    EXPECT_EQ(strip.columns()[3].state(), occupancy::run);
}

TEST(OccupancyStrip, EqualNeighboursOfOneColumnEachAreARunAndALoneWordIsNone) {
    const occupancy_strip strip = strip_of(words_of(5, {{0, 4, {"1", "1", "2", "3", "3"}}}), 5);
    EXPECT_EQ(strip.stretches(),
              (std::vector<occupancy_stretch>{
                  {occupancy::run, 0, 2}, {occupancy::set, 2, 3}, {occupancy::run, 3, 5}}));
    EXPECT_TRUE(strip.columns()[3].begins_run);
}

TEST(OccupancyStrip, WordsWithDontCareBitsHaveAStateOfTheirOwn) {
    const occupancy_strip strip =
        strip_of(words_of(6, {{0, 1, {"XX"}}, {2, 3, {"01", "0000000X"}}, {4, 4, {"X1"}}}), 3);
    EXPECT_EQ(strip.stretches(), (std::vector<occupancy_stretch>{{occupancy::dont_care, 0, 3}}));
}

TEST(OccupancyStrip, StretchEndsWithItsPartOfTheGrid) {
    occupancy_strip strip(column_grid(std::vector<shown_stretch>{{0, 1, 0, 2}, {8, 9, 3, 2}}));
    strip.take({0, 9, ""});
    EXPECT_EQ(strip.stretches(),
              (std::vector<occupancy_stretch>{{occupancy::unset, 0, 2}, {occupancy::unset, 2, 4}}));
}

TEST(OccupancyStrip, WordsAreSetLater) {
    occupancy_strip strip(column_grid(0, 5, 3));
    strip.take({0, 5, ""});
    strip.add_set(1, 3);
    EXPECT_EQ(strip.stretches(),
              (std::vector<occupancy_stretch>{
                  {occupancy::partly_set, 0, 1}, {occupancy::set, 1, 2}, {occupancy::unset, 2, 3}}));
}

} // namespace

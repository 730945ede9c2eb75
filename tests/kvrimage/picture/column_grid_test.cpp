#include "kvrimage/picture/column_grid.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace {

using namespace kvrimage;

using column_words = std::vector<std::pair<std::uint32_t, std::uint64_t>>;

column_words parts_of(const column_grid& grid, std::uint64_t first, std::uint64_t last) {
    column_words found;
    grid.for_each_column(
        first, last, [&](std::uint32_t column, std::uint64_t words) { found.emplace_back(column, words); });
    return found;
}

TEST(ColumnGrid, WordsAreSharedOutEvenlyAndTheLastColumnGetsTheRest) {
    const column_grid grid(0, 9, 4);
    EXPECT_EQ(grid.parts().front().words_a_column, 3);
    EXPECT_EQ(grid.columns(), 4);
    EXPECT_EQ(grid.first_of(3), 9);
    EXPECT_EQ(grid.last_of(2), 8);
    EXPECT_EQ(grid.last_of(3), 9);
    EXPECT_EQ(grid.words_of(2), 3);
    EXPECT_EQ(grid.words_of(3), 1);
}

TEST(ColumnGrid, FewWordsMakeNoMoreColumnsThanWords) {
    EXPECT_EQ(column_grid(5, 5, 100).columns(), 1);
    EXPECT_EQ(column_grid(5, 7, 100).columns(), 3);
}

TEST(ColumnGrid, ColumnsCountFromTheFirstOffset) {
    const column_grid grid(100, 199, 10);
    EXPECT_EQ(grid.column_of(100), 0);
    EXPECT_EQ(grid.column_of(109), 0);
    EXPECT_EQ(grid.column_of(110), 1);
    EXPECT_EQ(grid.column_of(199), 9);
}

TEST(ColumnGrid, CoversTheDeepestMemory) {
    const column_grid grid(0, 0xFFFF'FFFF, 1024);
    EXPECT_EQ(grid.columns(), 1024);
    EXPECT_EQ(grid.last_of(1023), 0xFFFF'FFFF);
}

TEST(ColumnGrid, CoversAllAddresses) {
    const std::uint64_t last = ~std::uint64_t{0};
    const column_grid grid(0, last, 3);
    EXPECT_EQ(grid.columns(), 3);
    EXPECT_EQ(grid.last_of(2), last);
    EXPECT_EQ(parts_of(grid, last - 1, last), (column_words{{2, 2}}));
}

TEST(ColumnGrid, RunIsSplitIntoItsPartsOfColumns) {
    EXPECT_EQ(parts_of(column_grid(10, 29, 5), 13, 18), (column_words{{0, 1}, {1, 4}, {2, 1}}));
}

TEST(ColumnGrid, EachStretchHasItsOwnColumns) {
    const column_grid grid(std::vector<shown_stretch>{{0, 9, 0, 5}, {100, 102, 8, 6}});
    EXPECT_EQ(grid.columns(), 8);
    EXPECT_EQ(grid.room(), 14);
    EXPECT_EQ(grid.column_of(9), 4);
    EXPECT_EQ(grid.column_of(100), 5);
    EXPECT_EQ(grid.first_of(5), 100);
    EXPECT_EQ(grid.last_of(7), 102);
    EXPECT_EQ(grid.part_of_column(4).first, 0);
    EXPECT_EQ(grid.part_of_column(5).first, 100);
}

TEST(ColumnGrid, WhatIsInNoStretchIsInNoColumn) {
    const column_grid grid(std::vector<shown_stretch>{{0, 9, 0, 5}, {100, 102, 8, 6}});
    EXPECT_EQ(parts_of(grid, 8, 100), (column_words{{4, 2}, {5, 1}}));
    EXPECT_EQ(parts_of(grid, 10, 99), (column_words{}));
    EXPECT_EQ(parts_of(grid, 103, 200), (column_words{}));
}

} // namespace

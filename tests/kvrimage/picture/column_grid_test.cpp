#include "kvrimage/picture/column_grid.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using namespace kvrimage;

TEST(ColumnGrid, WordsAreSharedOutEvenlyAndTheLastColumnGetsTheRest) {
    const column_grid grid(0, 9, 4);
    EXPECT_EQ(grid.words(), 10);
    EXPECT_EQ(grid.words_a_column(), 3);
    EXPECT_EQ(grid.columns(), 4);
    EXPECT_EQ(grid.first_of(3), 9);
    EXPECT_EQ(grid.last_of(2), 8);
    EXPECT_EQ(grid.last_of(3), 9);
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

TEST(ColumnGrid, RunIsSplitIntoItsPartsOfColumns) {
    std::vector<std::pair<std::uint32_t, std::uint64_t>> parts;
    column_grid(10, 29, 5).for_each_column(
        {13, 18, "1"}, [&](std::uint32_t column, std::uint64_t words) { parts.emplace_back(column, words); });
    EXPECT_EQ(parts, (std::vector<std::pair<std::uint32_t, std::uint64_t>>{{0, 1}, {1, 4}, {2, 1}}));
}

} // namespace

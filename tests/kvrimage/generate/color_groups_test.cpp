#include "kvrimage/generate/color_groups.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kvrimage;

TEST(GroupedColors, AreNoMoreThanThePixelsHave) {
    const std::vector<color> pixels = {{1, 2, 3}, {9, 2, 3}, {1, 2, 3}};
    EXPECT_EQ(grouped_colors(pixels, 256), (std::vector<color>{{1, 2, 3}, {9, 2, 3}}));
    EXPECT_EQ(grouped_colors(std::vector<color>(4, {5, 6, 7}), 2), (std::vector<color>{{5, 6, 7}}));
}

TEST(GroupedColors, AreMeansOfTheirGroups) {
    const std::vector<color> pixels = {{0, 0, 0}, {0, 3, 0}, {100, 7, 1}, {101, 7, 1}};
    EXPECT_EQ(grouped_colors(pixels, 2), (std::vector<color>{{0, 2, 0}, {101, 7, 1}}));
    EXPECT_EQ(grouped_colors(pixels, 1), (std::vector<color>{{50, 4, 1}}));
}

} // namespace

#include "kvrimage/diagnostics/places.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using namespace kvrimage;

TEST(Places, KeepTheFirstOnesAndCountAll) {
    places where;
    EXPECT_TRUE(where.empty());
    for (std::uint64_t offset = 0; offset < 12; ++offset) {
        where.add({offset, 1});
    }
    EXPECT_FALSE(where.empty());
    EXPECT_EQ(where.count(), 12U);
    EXPECT_EQ(where.first().size(), places::kept);
    EXPECT_EQ(where.front().offset, 0U);
}

TEST(NumberedPlaces, KeepTheNumberOfTheFirstAndTheLargest) {
    numbered_places where;
    EXPECT_TRUE(where.empty());
    where.add({3, 1}, 5);
    where.add({4, 1}, 9);
    where.add({5, 1}, 2, 7);
    EXPECT_EQ(where.first, 5U);
    EXPECT_EQ(where.most, 9U);
    EXPECT_EQ(where.where.count(), 3U);
    EXPECT_EQ(where.where.front().offset, 3U);
}

TEST(NumberedPlaces, TakeTheLargestOfAPlaceWithSeveral) {
    numbered_places where;
    where.add({0, 1}, 4, 8);
    EXPECT_EQ(where.first, 4U);
    EXPECT_EQ(where.most, 8U);
}

} // namespace

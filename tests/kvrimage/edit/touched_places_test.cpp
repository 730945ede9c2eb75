#include "kvrimage/edit/touched_places.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

assignment one_word_for(std::uint64_t first, std::uint64_t last) {
    return {{first, last}, {word::of(1, 8)}};
}

TEST(TouchedPlaces, LastPlaceThatSetsAnAddressCounts) {
    const std::vector<assignment> made = {one_word_for(2, 5)};
    edit_pieces pieces(made);
    const auto touched = find_touched_places({{10, {0, 9}}, {20, {4, 4}}, {30, {7, 9}}}, pieces);
    ASSERT_EQ(touched.size(), 2U);
    EXPECT_EQ(touched[0].number, 10U);
    ASSERT_EQ(touched[0].pieces.size(), 2U);
    EXPECT_EQ(touched[0].pieces[0].last, 3U);
    EXPECT_EQ(touched[0].pieces[1].first, 5U);
    EXPECT_EQ(touched[1].number, 20U);
    EXPECT_EQ(touched[1].pieces.size(), 1U);
    EXPECT_TRUE(pieces.empty());
}

TEST(TouchedPlaces, WhatNoPlaceSetsIsLeft) {
    const std::vector<assignment> made = {one_word_for(2, 5)};
    edit_pieces pieces(made);
    EXPECT_EQ(find_touched_places({{0, {0, 3}}}, pieces).size(), 1U);
    ASSERT_EQ(pieces.all().size(), 1U);
    EXPECT_EQ(pieces.all()[0].first, 4U);
}

TEST(TouchedPlaces, NoneWithoutPlaces) {
    const std::vector<assignment> made = {one_word_for(2, 5)};
    edit_pieces pieces(made);
    EXPECT_TRUE(find_touched_places({}, pieces).empty());
}

} // namespace

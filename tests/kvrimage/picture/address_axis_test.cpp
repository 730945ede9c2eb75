#include "kvrimage/picture/address_axis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

/// A scale in characters: a column is one character, labels are separated by blanks and stay within the
/// columns.
axis_scale scale_of(const column_grid& grid, const address_axis& axis, double gap = 1) {
    const auto middle_of = [&grid](std::uint64_t offset) {
        const std::uint32_t column = grid.column_of(offset);
        const column_grid::part& part = grid.part_of_column(column);
        return part.begin + (column - part.first_column) + 0.5;
    };
    return {
        middle_of, 0, 1, static_cast<double>(axis.label_size()), gap, 0, static_cast<double>(grid.room())};
}

std::vector<std::string> texts_of_labels(const column_grid& grid, std::uint64_t base, double gap = 1) {
    const address_axis axis(grid, base);
    std::vector<std::string> texts;
    for (const address_label& label : axis.labels(scale_of(grid, axis, gap))) {
        texts.push_back(label.text);
    }
    return texts;
}

TEST(AddressAxis, FirstAndLastAddressAndMultiplesOfAPowerOfTwoAreLabelled) {
    EXPECT_THAT(texts_of_labels(column_grid(0, 255, 24), 0), ElementsAre("0x00", "0x80", "0xFF"));
    EXPECT_THAT(texts_of_labels(column_grid(0, 255, 12), 0), ElementsAre("0x00", "0xFF"));
    EXPECT_THAT(texts_of_labels(column_grid(0, 0, 12), 0), ElementsAre("0x0"));
}

TEST(AddressAxis, LabelsFollowTheBase) {
    const column_grid grid(2, 40, 39);
    EXPECT_EQ(address_axis(grid, 3).label_size(), 4);
    EXPECT_THAT(texts_of_labels(grid, 3), ElementsAre("0x05", "0x10", "0x18", "0x20", "0x2B"));
}

TEST(AddressAxis, LabelsAreBesideTheirWordsAndWithinTheDrawing) {
    const column_grid grid(0, 19, 20);
    const address_axis axis(grid, 0);
    const std::vector<address_label> labels = axis.labels(scale_of(grid, axis));
    ASSERT_EQ(labels.size(), 3);
    EXPECT_EQ(labels[0], (address_label{0, "0x00", 0.5, 0, 0}));
    EXPECT_EQ(labels[1], (address_label{8, "0x08", 8.5, 6.5, 0}));
    EXPECT_EQ(labels[2], (address_label{19, "0x13", 19.5, 16, 0}));
}

TEST(AddressAxis, LabelsThatTheStepHasExactlyRoomForAreNotThinnedOut) {
    EXPECT_THAT(texts_of_labels(column_grid(0, 63, 64), 0, 4),
                ElementsAre("0x00", "0x10", "0x18", "0x20", "0x28", "0x30", "0x3F"));
}

TEST(AddressAxis, LastAddressTooCloseToTheFirstHasALineOfItsOwn) {
    const column_grid grid(0, 4, 5);
    const address_axis axis(grid, 0);
    const std::vector<address_label> labels = axis.labels(scale_of(grid, axis));
    ASSERT_EQ(labels.size(), 2);
    EXPECT_EQ(labels[0], (address_label{0, "0x0", 0.5, 0, 0}));
    EXPECT_EQ(labels[1], (address_label{4, "0x4", 4.5, 2, 1}));
}

TEST(AddressAxis, EachOfSeveralStretchesHasItsFirstAndItsLastAddress) {
    const column_grid grid(
        std::vector<shown_stretch>{{0, 15, 0, 16}, {0x100, 0x100, 19, 8}, {0x200, 0x20F, 30, 16}});
    const address_axis axis(grid, 0);
    std::vector<address_label> labels = axis.labels(scale_of(grid, axis));
    std::ranges::stable_sort(labels, {}, &address_label::line);
    std::vector<std::string> texts;
    for (const address_label& label : labels) {
        texts.push_back(label.text);
    }
    EXPECT_THAT(texts, ElementsAre("0x000", "0x008", "0x100", "0x200", "0x208", "0x00F", "0x20F"));
}

TEST(AddressAxis, HighestAddressesDoNotOverflow) {
    EXPECT_THAT(texts_of_labels(column_grid(0, 3, 80), 0xFFFF'FFFF'FFFF'FFFC),
                ElementsAre("0xFFFFFFFFFFFFFFFC", "0xFFFFFFFFFFFFFFFF"));
    EXPECT_THAT(texts_of_labels(column_grid(0, ~std::uint64_t{0}, 60), 0),
                ElementsAre("0x0000000000000000", "0x8000000000000000", "0xFFFFFFFFFFFFFFFF"));
    EXPECT_THAT(texts_of_labels(column_grid(0, ~std::uint64_t{0}, 20), 0, 9),
                ElementsAre("0x0000000000000000", "0xFFFFFFFFFFFFFFFF"));
}

TEST(AddressAxis, NoTwoLabelsShareAPlace) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 500; ++round) {
        const auto room = static_cast<std::uint32_t>(random() % 200 + 20);
        const column_grid grid(0, random() >> (random() % 63 + 1), room);
        const address_axis axis(grid, 0);
        std::vector<address_label> labels = axis.labels(scale_of(grid, axis));
        ASSERT_EQ(labels.front().offset, 0);
        ASSERT_EQ(labels.back().offset, grid.last());
        std::ranges::stable_sort(labels, {}, &address_label::line);
        for (std::size_t index = 0; index < labels.size(); ++index) {
            const double width = static_cast<double>(axis.label_size());
            EXPECT_GE(labels[index].begin, 0);
            EXPECT_LE(labels[index].begin + width, room);
            if (index > 0 && labels[index - 1].line == labels[index].line) {
                EXPECT_GE(labels[index].begin, labels[index - 1].begin + width + 1) << round;
            }
        }
    }
}

} // namespace

#include "kvrimage/compare/difference_figures.h"
#include "kvrimage/picture/picture.h"
#include "kvrimage/picture/picture_contents.h"
#include "tests/kvrimage/picture/drawn_memory.h"
#include "tests/kvrimage/picture/well_formed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::HasSubstr;

picture_contents difference_of(const memory_image& left, const memory_image& right,
                               const difference_options& options = {}) {
    return contents_of_difference(left, right, options, {60, 16, 60, 1, 3});
}

TEST(DifferencePicture, NamesTitlesAndCountsAreThoseOfBoth) {
    const memory_image left = memory_of(8, 8, {{0, 3, {"01"}}});
    const memory_image right = memory_of(16, 8, {{1, 4, {"0001", "0002"}}});
    const picture_contents contents =
        difference_of(left, right, {.left = {"a/old.mif", "MIF"}, .right = {"new.hex", "Intel HEX"}});
    EXPECT_EQ(contents.name, "A: old.mif  B: new.hex");
    EXPECT_EQ(contents.title, "1 word changed, 1 only in A, 1 only in B");
    EXPECT_EQ(contents.vertical_title, "words that differ");
    EXPECT_THAT(contents.notes,
                ElementsAre("A: MIF, 8 words of 8 bits, 4 set", "B: Intel HEX, 8 words of 16 bits, 4 set"));
    EXPECT_EQ(difference_of(left, right).name, "");
    EXPECT_EQ(difference_of(left, right, {.right = {"b", ""}}).name, "A:   B: b");
    EXPECT_EQ(difference_of(left, right, {.left = {"a", ""}}).name, "A: a  B: ");
}

TEST(DifferencePicture, StripShowsWhereEitherIsSet) {
    const memory_image left = memory_of(8, 8, {{0, 3, {"01"}}}, 4);
    const memory_image right = memory_of(8, 8, {{1, 5, {"01", "02"}}}, 6);
    const picture_contents contents = difference_of(left, right);
    EXPECT_THAT(contents.strip.stretches(), ElementsAre(occupancy_stretch{occupancy::set, 0, 8},
                                                        occupancy_stretch{occupancy::unset, 8, 10}));
    const picture_contents part = difference_of(left, right, {.range = address_range{11, 13}});
    EXPECT_THAT(part.strip.stretches(), ElementsAre(occupancy_stretch{occupancy::set, 0, 1},
                                                    occupancy_stretch{occupancy::unset, 1, 3}));
    EXPECT_EQ(part.title, "0 words changed, 0 only in A, 1 only in B");
    const picture_contents before = difference_of(left, right, {.range = address_range{4, 5}});
    EXPECT_EQ(before.title, "0 words changed, 2 only in A, 0 only in B");
    const picture_contents border = difference_of(left, right, {.range = address_range{6, 6}});
    EXPECT_THAT(border.strip.stretches(), ElementsAre(occupancy_stretch{occupancy::set, 0, 1}));
    EXPECT_EQ(border.title, "0 words changed, 1 only in A, 0 only in B");
}

TEST(DifferencePicture, MemoriesFarApartAreShownSideBySide) {
    const memory_image left = memory_of(8, 16, {{0, 15, {"01"}}});
    const memory_image right = memory_of(8, 16, {{0, 15, {"01"}}}, 0xFFFF'FFFF'FFFF'FFF0);
    const picture_contents contents = difference_of(left, right);
    ASSERT_EQ(contents.grid.parts().size(), 2);
    EXPECT_EQ(contents.title, "0 words changed, 16 only in A, 16 only in B");
    EXPECT_EQ(contents.notes.at(2), "1 break leaves out 18446744073709551584 unset words");
    EXPECT_EQ(fault_of_xml(draw_difference_svg(left, right)), std::nullopt);
}

TEST(DifferencePicture, InCharacters) {
    const memory_image left = memory_of(8, 30, {{0, 9, {"01"}}});
    const memory_image right = memory_of(8, 30, {{5, 9, {"02"}}, {20, 24, {"03"}}});
    EXPECT_EQ("\n" + draw_difference_in_characters(left, right,
                                                   {.left = {"old", ""}, .right = {"new", ""}, .rows = 8},
                                                   {.columns = 40, .has_blocks = true}),
              R"(
A: old  B: new  5 words changed, 5 only in A, 5 only in B
words that differ over address (words)
A: 30 words of 8 bits, 10 set
B: 30 words of 8 bits, 10 set

         │     █████
 changed ┤     █████
         │
         │█████
  only A ┤█████
         │
         │                    █████
  only B ┤                    █████
   words │■■■■■■■■■■··········■■■■■·····
         └┬───────┬───────┬────────────┬
         0x00    0x08    0x10       0x1D
          ▁▄█ part of the words  ■ set
          · unset
)");
}

TEST(DifferencePicture, InSvgEachKindHasALaneWithItsCount) {
    const memory_image left = memory_of(8, 8, {{0, 3, {"01"}}});
    const memory_image right = memory_of(8, 8, {{2, 5, {"02"}}});
    const std::string svg = draw_difference_svg(left, right, {.left = {"<a>", ""}, .right = {"b", ""}});
    EXPECT_EQ(fault_of_xml(svg), std::nullopt);
    EXPECT_THAT(texts_of(svg, "end value"), ElementsAre("changed", "2", "only A", "2", "only B", "2"));
    EXPECT_EQ(attribute_of(svg, "changed", "d"), "M302 144v-80H508v80z");
    EXPECT_EQ(attribute_of(svg, "left", "d"), "M96 236v-80H302v80z");
    EXPECT_EQ(attribute_of(svg, "right", "d"), "M508 328v-80H714v80z");
    EXPECT_THAT(texts_of(svg, "name"), ElementsAre("A: &lt;a&gt;  B: b"));
    EXPECT_THAT(texts_of(svg, "legend"), ElementsAre("set in A or B", "unset"));
}

TEST(DifferencePicture, AWordOfManyIsSeenInItsLane) {
    const memory_image left = memory_of(8, 1'000'000, {{0, 999'999, {"01"}}});
    memory_image right = left;
    right.set(500'000, word::of(2, 8));
    EXPECT_THAT(attribute_of(draw_difference_svg(left, right), "changed", "d"), HasSubstr("v-1H"));
}

TEST(DifferencePicture, RangeMustBeInTheAddressesOfBoth) {
    const memory_image left = memory_of(8, 8, {}, 8);
    const memory_image right = memory_of(8, 8, {}, 32);
    for (const address_range range : {address_range{7, 9}, address_range{8, 40}, address_range{9, 8}}) {
        EXPECT_THROW(static_cast<void>(draw_difference_svg(left, right, {.range = range})),
                     std::out_of_range);
    }
    EXPECT_NO_THROW(static_cast<void>(draw_difference_svg(left, right, {.range = address_range{16, 31}})));
}

memory_image scattered_memory(std::mt19937& random) {
    memory_image image(8, random() % 5000 + 1, random() % 3000);
    for (std::uint32_t island = 0; island < random() % 5; ++island) {
        const std::uint64_t first = image.base() + random() % image.depth();
        image.fill({first, std::min(first + random() % 20, image.last_address())},
                   std::vector{word::of(random() % 3, 8), word::of(1, 8)});
    }
    return image;
}

TEST(DifferencePicture, CountsAreThoseOfTheComparison) {
    std::mt19937 random(9);
    for (int round = 0; round < 100; ++round) {
        const memory_image left = scattered_memory(random);
        const memory_image right = scattered_memory(random);
        difference_counter counter(left, right);
        for_each_difference(left, right, [&](const difference& found) { counter.take(found); });
        const difference_figures& figures = counter.figures();
        const picture_contents contents = difference_of(left, right);
        const auto& map = std::get<difference_map>(contents.words);
        EXPECT_EQ(map.total(difference_kind::left_only), figures.left_only);
        EXPECT_EQ(map.total(difference_kind::right_only), figures.right_only);
        EXPECT_EQ(map.total(difference_kind::changed),
                  figures.words - figures.left_only - figures.right_only);
        // The strip shows set words and the plot shows differences; gaps contain neither.
        std::uint64_t set = 0;
        std::uint64_t differing = 0;
        for (const word_column& column : contents.strip.columns()) {
            set += column.set;
        }
        for (std::uint32_t column = 0; column < contents.grid.columns(); ++column) {
            for (const difference_kind kind : difference_kinds) {
                differing += map.count(kind, column);
            }
        }
        EXPECT_EQ(set, right.count_set() + figures.left_only) << round;
        EXPECT_EQ(differing, figures.words) << round;
        EXPECT_EQ(fault_of_xml(draw_difference_svg(left, right)), std::nullopt);
    }
}

} // namespace

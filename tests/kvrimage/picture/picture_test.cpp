#include "kvrimage/picture/picture.h"
#include "kvrimage/picture/picture_contents.h"
#include "tests/kvrimage/picture/drawn_memory.h"
#include "tests/kvrimage/picture/well_formed.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::HasSubstr;

picture_contents contents_for(const memory_image& image, const picture_options& options = {}) {
    return contents_of(image, options, {100, 16, 50, 1, 3});
}

TEST(PictureContents, TitleHasTheFormatAndTheSize) {
    const memory_image image = memory_of(16, 256, {});
    EXPECT_EQ(contents_for(image).title, "256 words of 16 bits, none set");
    EXPECT_EQ(contents_for(image, {.format_title = "MIF"}).title, "MIF, 256 words of 16 bits, none set");
    EXPECT_EQ(contents_for(memory_of(1, 1, {{0, 0, {"1"}}})).title, "1 word of 1 bit, all set");
}

TEST(PictureContents, TitleHasTheAddressesWhereTheyAreNotFrom0ToTheDepth) {
    const memory_image image = memory_of(8, 256, {});
    EXPECT_EQ(contents_for(image, {.range = address_range{0, 255}}).title, "256 words of 8 bits, none set");
    EXPECT_EQ(contents_for(image, {.range = address_range{0, 254}}).title,
              "256 words of 8 bits, addresses 0x0 to 0xFE, none set");
    EXPECT_EQ(contents_for(image, {.range = address_range{16, 255}}).title,
              "256 words of 8 bits, addresses 0x10 to 0xFF, none set");
    EXPECT_EQ(contents_for(memory_of(8, 256, {}, 0x8000'0000)).title,
              "256 words of 8 bits, addresses 0x80000000 to 0x800000FF, none set");
}

TEST(PictureContents, VerticalTitleSaysWhatIsDrawn) {
    EXPECT_EQ(contents_for(memory_of(64, 4, {})).vertical_title, "value (unsigned, 64 bits)");
    EXPECT_EQ(contents_for(memory_of(1, 4, {}), {.is_signed = true}).vertical_title, "value (signed, 1 bit)");
    EXPECT_EQ(contents_for(memory_of(16, 4, {}), {.is_signed = true, .fraction_bits = 15}).vertical_title,
              "value (fixed point, 16 bits, 15 of a fraction)");
    EXPECT_EQ(contents_of(memory_of(65, 4, {}), {}, {100, 65, 50, 1, 3}).vertical_title, "bit position");
    EXPECT_EQ(contents_for(memory_of(65, 4, {})).vertical_title, "bit position, 1 byte a row");
    EXPECT_EQ(contents_for(memory_of(300, 4, {}), {.is_signed = true}).vertical_title,
              "bit position, 4 bytes a row");
}

TEST(PictureContents, TitleSaysHowManyWordsOfTheRangeAreSet) {
    const memory_image image = memory_of(8, 8, {{0, 2, {"01"}}});
    EXPECT_THAT(contents_for(image).title, HasSubstr(", 3 set"));
    EXPECT_THAT(contents_for(image, {.range = address_range{0, 2}}).title, HasSubstr(", all set"));
    EXPECT_THAT(contents_for(image, {.range = address_range{3, 7}}).title, HasSubstr(", none set"));
}

TEST(PictureContents, NoteSaysThatThePictureIsSampled) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    const std::uint64_t depth = std::uint64_t{1} << 32U;
    EXPECT_THAT(contents_for(memory_of(4, depth, {{0, depth - 1, {"1", "2", "3"}}})).notes,
                ElementsAre("sampled: 64 runs at each of 16 places a column"));
}

TEST(PictureContents, NoteSaysWhatIsLeftOut) {
    EXPECT_THAT(contents_for(memory_of(8, 8, {{0, 0, {"01"}}})).notes, ElementsAre());
    EXPECT_THAT(contents_for(memory_of(8, 1000, {{0, 9, {"01"}}})).notes,
                ElementsAre("1 break leaves out 989 unset words"));
    EXPECT_THAT(contents_for(memory_of(8, 1000, {{500, 500, {"01"}}})).notes,
                ElementsAre("2 breaks leave out 997 unset words"));
}

TEST(PictureContents, StretchesAreTheSameInThePlotAndTheStrip) {
    const picture_contents contents = contents_for(memory_of(8, 1000, {{0, 9, {"01"}}}));
    ASSERT_EQ(contents.grid.parts().size(), 2);
    ASSERT_EQ(contents.strip.grid().parts().size(), 2);
    for (const std::size_t index : {0U, 1U}) {
        const column_grid::part& plot = contents.grid.parts()[index];
        const column_grid::part& strip = contents.strip.grid().parts()[index];
        EXPECT_EQ(plot.first, strip.first);
        EXPECT_EQ(plot.last, strip.last);
        EXPECT_EQ(plot.begin, strip.begin * 2);
        EXPECT_EQ(plot.room, strip.room * 2);
    }
}

TEST(PictureContents, WordsAreThoseOfTheRange) {
    const memory_image image =
        memory_of(8, 8, {{0, 7, {"00", "01", "02", "03", "04", "05", "06", "07"}}}, 100);
    const picture_contents contents = contents_for(image, {.range = address_range{102, 104}});
    const auto& columns = std::get<waveform>(contents.words).columns();
    ASSERT_EQ(columns.size(), 3);
    EXPECT_EQ(columns[0], (value_bounds{2, 2}));
    EXPECT_EQ(columns[2], (value_bounds{4, 4}));
    EXPECT_EQ(contents.grid.first(), 2);
}

TEST(Picture, RangeMustBeInTheMemory) {
    const memory_image image = memory_of(8, 16, {}, 100);
    for (const address_range range : {address_range{99, 100}, address_range{100, 116},
                                      address_range{105, 104}, address_range{0, ~std::uint64_t{0}}}) {
        EXPECT_THROW(static_cast<void>(draw_svg(image, {.range = range})), std::out_of_range);
        EXPECT_THROW(static_cast<void>(draw_in_characters(image, {.range = range}, {})), std::out_of_range);
    }
    EXPECT_NO_THROW(static_cast<void>(draw_svg(image, {.range = address_range{100, 115}})));
    EXPECT_NO_THROW(static_cast<void>(draw_svg(image, {.range = address_range{115, 115}})));
}

TEST(Picture, ScreenMustHaveRoom) {
    const memory_image image = memory_of(64, 16, {});
    EXPECT_THROW(static_cast<void>(draw_in_characters(image, {}, {.columns = least_screen_columns - 1})),
                 std::invalid_argument);
    EXPECT_NO_THROW(static_cast<void>(draw_in_characters(image, {}, {.columns = least_screen_columns})));
}

TEST(Picture, HasAFewRowsAtLeast) {
    const memory_image image = memory_of(8, 16, {});
    EXPECT_THROW(static_cast<void>(draw_svg(image, {.rows = 3})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(draw_in_characters(image, {.rows = 3}, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(draw_difference_svg(image, image, {.rows = 3})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(draw_difference_in_characters(image, image, {.rows = 3}, {})),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(draw_difference_in_characters(image, image, {}, {.columns = 39})),
                 std::invalid_argument);
}

TEST(Picture, RowsOfAMapInSvgAreLimited) {
    const memory_image image = memory_of(1024, 2, {});
    EXPECT_EQ(draw_svg(image, {.rows = 5000}), draw_svg(image));
    EXPECT_NE(draw_svg(image, {.rows = 100}), draw_svg(image));
}

TEST(Picture, EveryWidthMakesAPicture) {
    for (const std::uint32_t width : {1U, 2U, 63U, 64U, 65U, 1024U}) {
        for (const std::uint64_t depth : {1U, 2U, 5000U}) {
            for (const bool is_signed : {false, true}) {
                const std::string zero((width + 3) / 4, '0');
                const std::string one = std::string(zero.size() - 1, '0') + '1';
                const memory_image image = memory_of(width, depth, {{0, depth - 1, {zero, one}}});
                EXPECT_EQ(fault_of_xml(draw_svg(image, {.is_signed = is_signed})), std::nullopt)
                    << width << " " << depth;
                EXPECT_FALSE(draw_in_characters(image, {.is_signed = is_signed}, {}).empty());
            }
        }
    }
}

TEST(Picture, WordsThatAreSetByAddressAreDrawn) {
    memory_image image(8, 4, 0x100);
    image.set(0x100, word::of(1, 8));
    image.set(0x101, word::of(1, 8));
    image.set(0x103, word::of(2, 8));
    EXPECT_EQ(draw_svg(image), draw_svg(memory_of(8, 4, {{0, 1, {"01"}}, {3, 3, {"02"}}}, 0x100)));
}

TEST(Picture, DeepestMemoryAtTheHighestAddressesIsDrawn) {
    const std::uint64_t depth = deepest_memory;
    const memory_image image =
        memory_of(16, depth, {{0, depth - 1, {"1234"}}}, ~std::uint64_t{0} - (depth - 1));
    const std::string svg = draw_svg(image);
    EXPECT_EQ(fault_of_xml(svg), std::nullopt);
    EXPECT_EQ(
        texts_of(svg, "title"),
        (std::vector<std::string>{
            "4294967296 words of 16 bits, addresses 0xFFFFFFFF00000000 to 0xFFFFFFFFFFFFFFFF, all set"}));
    EXPECT_EQ(texts_of(svg, "middle address").front(), "0xFFFFFFFF00000000");
}

} // namespace

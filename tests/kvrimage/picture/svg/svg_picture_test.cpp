#include "kvrimage/picture/picture.h"
#include "tests/kvrimage/picture/drawn_memory.h"
#include "tests/kvrimage/picture/well_formed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

// The plot extends from 96 to 920 horizontally and, because values keep 6 pixels from the frame, from 70 to
// 322 vertically.

TEST(SvgPicture, NameAndTitleAreShownEscaped) {
    const std::string svg =
        draw_svg(memory_of(8, 2, {}), {.name = "dir/<a> & \"b\".mif", .format_title = "MIF"});
    EXPECT_EQ(fault_of_xml(svg), std::nullopt);
    EXPECT_NE(svg.find("<title>&lt;a&gt; &amp; &quot;b&quot;.mif: MIF, 2 words of 8 bits, none set</title>"),
              std::string::npos);
    EXPECT_THAT(texts_of(svg, "name"), ElementsAre("&lt;a&gt; &amp; &quot;b&quot;.mif"));
    EXPECT_THAT(texts_of(svg, "title"), ElementsAre("MIF, 2 words of 8 bits, none set"));
    EXPECT_NE(svg.find(">value (unsigned, 8 bits)</text>"), std::string::npos);
}

TEST(SvgPicture, WithoutANameTheTitleStandsAlone) {
    const std::string svg = draw_svg(memory_of(8, 2, {}));
    EXPECT_NE(svg.find("<title>2 words of 8 bits, none set</title>"), std::string::npos);
    EXPECT_THAT(texts_of(svg, "name"), ElementsAre());
}

TEST(SvgPicture, LongNameLosesItsMiddle) {
    const std::string svg = draw_svg(memory_of(8, 2, {}), {.name = std::string(81, 'n')});
    EXPECT_THAT(texts_of(svg, "name"), ElementsAre(std::string(40, 'n') + "…" + std::string(39, 'n')));
}

TEST(SvgPicture, SingleValuesMakeALineThatLeavesGaps) {
    const std::string svg = draw_svg(memory_of(8, 4, {{0, 1, {"01"}}, {3, 3, {"02"}}}));
    EXPECT_EQ(attribute_of(svg, "wave", "d"), "M96 196H508M714 70H920");
    EXPECT_EQ(attribute_of(svg, "envelope", "d"), "");
}

TEST(SvgPicture, SignedValuesHaveZeroBetweenThem) {
    const std::string svg =
        draw_svg(memory_of(64, 2, {{0, 1, {"8000000000000000", "7FFFFFFFFFFFFFFF"}}}), {.is_signed = true});
    EXPECT_EQ(attribute_of(svg, "wave", "d"), "M96 322H508V70H920");
}

TEST(SvgPicture, SeveralValuesAColumnMakeAnArea) {
    // Two words per column: 0 and 1 in the left half, 4 and 5 in the right half.
    const std::string svg =
        draw_svg(memory_of(8, 3296, {{0, 1647, {"00", "01"}}, {1648, 3295, {"04", "05"}}}));
    EXPECT_EQ(attribute_of(svg, "wave", "d"), "");
    EXPECT_EQ(attribute_of(svg, "envelope", "d"), "M96 271.6H508V70H920V120.4H508V322H96Z");
}

TEST(SvgPicture, TicksAreRoundValuesAndAddresses) {
    const std::string svg = draw_svg(memory_of(16, 256, {{0, 255, {"8000", "7FFF"}}}), {.is_signed = true});
    EXPECT_THAT(texts_of(svg, "end value"),
                ElementsAre("-30000", "-20000", "-10000", "0", "10000", "20000", "30000"));
    EXPECT_THAT(texts_of(svg, "middle address"),
                ElementsAre("0x00", "0x10", "0x20", "0x30", "0x40", "0x50", "0x60", "0x70", "0x80", "0x90",
                            "0xA0", "0xB0", "0xC0", "0xD0", "0xE0", "0xF0", "0xFF"));
    EXPECT_THAT(attributes_of(svg, "middle address", "x"),
                ElementsAre("97.61", "149.11", "200.61", "252.11", "303.61", "355.11", "406.61", "458.11",
                            "509.61", "561.11", "612.61", "664.11", "715.61", "767.11", "818.61", "870.11",
                            "918.39"));
}

TEST(SvgPicture, LabelsFollowTheBase) {
    const memory_image at_0 = memory_of(16, 256, {{0, 255, {"8000", "7FFF"}}});
    const memory_image at_base = memory_of(16, 256, {{0, 255, {"8000", "7FFF"}}}, 0x1'0000'0010);
    EXPECT_THAT(texts_of(draw_svg(at_base), "middle address"),
                ElementsAre("0x100000010", "0x100000040", "0x100000060", "0x100000080", "0x1000000A0",
                            "0x1000000C0", "0x1000000E0", "0x10000010F"));
    EXPECT_EQ(attribute_of(draw_svg(at_base), "wave", "d"), attribute_of(draw_svg(at_0), "wave", "d"));
}

TEST(SvgPicture, LongLabelsStayInThePicture) {
    const std::string last = draw_svg(memory_of(8, 8, {}, 0xFFFF'FFFF'FFFF'FFF8),
                                      {.range = address_range{0xFFFF'FFFF'FFFF'FFFD, 0xFFFF'FFFF'FFFF'FFFF}});
    EXPECT_THAT(texts_of(last, "middle address"),
                ElementsAre("0xFFFFFFFFFFFFFFFD", "0xFFFFFFFFFFFFFFFE", "0xFFFFFFFFFFFFFFFF"));
    EXPECT_THAT(attributes_of(last, "middle address", "x"), ElementsAre("233.33", "508", "782.67"));
    const std::string close = draw_svg(memory_of(8, 33, {}, 0x1000'0000'0000'0000));
    EXPECT_THAT(attributes_of(close, "middle address", "x"),
                ElementsAre("108.48", "308.24", "508", "707.76", "890.7"));
}

TEST(SvgPicture, StripShowsWhatIsSet) {
    const std::string svg = draw_svg(memory_of(8, 4, {{0, 1, {"01"}}, {3, 3, {"02"}}}));
    EXPECT_EQ(attribute_of(svg, "run", "d"), "M96 336H508v14H96z");
    EXPECT_EQ(attribute_of(svg, "unset", "d"), "M508 336H714v14H508z");
    EXPECT_EQ(attribute_of(svg, "set", "d"), "M714 336H920v14H714z");
    EXPECT_THAT(texts_of(svg, "legend"),
                ElementsAre("value", "set, words differ", "run of one word", "unset"));
}

TEST(SvgPicture, LineSeparatesTwoRuns) {
    EXPECT_EQ(attribute_of(draw_svg(memory_of(8, 4, {{0, 1, {"01"}}, {2, 3, {"02"}}})), "begin", "d"),
              "M508 336v14");
    EXPECT_EQ(attribute_of(draw_svg(memory_of(8, 4, {{0, 0, {"01"}}, {2, 3, {"02"}}})), "begin", "d"), "");
}

TEST(SvgPicture, LoneWordInALargeMemoryIsBetweenTwoBreaks) {
    const std::string svg = draw_svg(memory_of(8, 2'000'000'000, {{1'000'000'000, 1'000'000'000, {"01"}}}));
    EXPECT_THAT(texts_of(svg, "note"), ElementsAre("2 breaks leave out 1999999997 unset words"));
    EXPECT_THAT(texts_of(svg, "middle address"), ElementsAre("0x00000000", "0x3B9ACA00", "0x773593FF"));
    EXPECT_EQ(attributes_of(svg, "frame", "x").size(), 6); // of the plot and of the strip
    EXPECT_EQ(std::ranges::count(attribute_of(svg, "break", "d"), 'M'), 2);
}

TEST(SvgPicture, LineIsInterruptedAtABreak) {
    const std::string svg = draw_svg(memory_of(8, 1'000'000, {{0, 3, {"01"}}, {999'996, 999'999, {"01"}}}));
    EXPECT_THAT(texts_of(svg, "note"), ElementsAre("1 break leaves out 999992 unset words"));
    EXPECT_EQ(std::ranges::count(attribute_of(svg, "wave", "d"), 'M'), 2);
}

TEST(SvgPicture, MapShowsEachBitInItsPlace) {
    const std::string svg = draw_svg(memory_of(
        66, 5,
        {{0, 3, {"00000000000000001", "20000000000000000", "00000000000000000", "20000000000000000"}}}));
    EXPECT_EQ(attribute_of(svg, "all", "d"),
              "M1 0h1m1 0h1M0 65h1");                      // bit 65 is the first row, bit 0 the last
    EXPECT_EQ(attribute_of(svg, "unset", "d"), "several"); // a column of the map and one of the strip
    EXPECT_EQ(attributes_of(svg, "unset", "d").front(), "M755.2 64H920v264H755.2z");
    EXPECT_THAT(texts_of(svg, "end value"), ElementsAre("0", "8", "16", "24", "32", "40", "48", "56", "64"));
    EXPECT_EQ(texts_of(svg, "legend").size(), 4);
    EXPECT_NE(svg.find(">bit position</text>"), std::string::npos);
}

TEST(SvgPicture, LegendThatIsWiderThanThePictureGoesOnInAnotherLine) {
    const std::string svg = draw_svg(memory_of(
        66, 4000,
        {{0, 799, {"3FFFFFFFFFFFFFFFF", "3FFFFFFFFFFFF0000", "3FFFFFFFF00000000", "3FFFF000000000000"}},
         {1000, 1799, {std::string(17, '0')}},
         {2000, 2399, {std::string(16, '0') + 'X'}}}));
    const std::vector<std::string> lines = attributes_of(svg, "legend", "y");
    ASSERT_GT(lines.size(), 8U);
    EXPECT_EQ(std::ranges::adjacent_find(lines, std::not_equal_to()) - lines.begin(), 5);
    EXPECT_EQ(attributes_of(svg, "legend", "x")[6], attributes_of(svg, "legend", "x").front());
}

TEST(SvgPicture, DontCareBitsHaveAShadeOfTheirOwn) {
    const std::string svg = draw_svg(memory_of(68, 1, {{0, 0, {std::string(16, '0') + 'X'}}}));
    EXPECT_THAT(attributes_of(svg, "care", "d"),
                ElementsAre("M0 64h1M0 65h1M0 66h1M0 67h1", "M96 336H920v14H96z")); // and in the strip
}

TEST(SvgPicture, WaveformOfRandomWordsIsASmallFile) {
    std::mt19937 random(3);
    auto words = std::make_unique<image_words>(100'000);
    for (std::uint64_t offset = 0; offset < words->size(); ++offset) {
        if (random() % 100 != 0) {
            words->set(offset, random_text(random, "0123456789ABCDEF", 16));
        }
    }
    const std::string svg = draw_svg({64, std::move(words)});
    EXPECT_EQ(fault_of_xml(svg), std::nullopt);
    EXPECT_LT(svg.size(), 500'000);
}

/// Ten words for a column of a bit map in which adjacent cells have different shades.
void set_words_of_column(image_words& words, std::uint32_t column) {
    constexpr std::uint32_t bits = 128;
    constexpr std::uint32_t words_a_column = 10;
    for (std::uint32_t word = 0; word < words_a_column; ++word) {
        std::string text(bits, '0');
        for (std::uint32_t bit = 0; bit < bits; ++bit) {
            constexpr std::array<std::uint32_t, 4> ones_of_shade = {1, 5, 9, 10};
            const std::uint32_t shade = (bit + column) % 5;
            text[bit] = shade == 4 ? 'X' : word < ones_of_shade[shade] ? '1' : '0';
        }
        words.set(std::uint64_t{column} * words_a_column + word, text);
    }
}

TEST(SvgPicture, MapOfCellsThatAllDifferIsASmallFile) {
    auto words = std::make_unique<image_words>(4120);
    for (std::uint32_t column = 0; column < 412; ++column) {
        set_words_of_column(*words, column);
    }
    const std::string svg = draw_svg({128, std::move(words)});
    EXPECT_EQ(fault_of_xml(svg), std::nullopt);
    EXPECT_GT(svg.size(), 300'000); // otherwise the memory does not determine the size
    EXPECT_LT(svg.size(), 500'000);
}

TEST(SvgPicture, BarsGrowFromZero) {
    const std::string svg = draw_svg(memory_of(8, 3, {{0, 2, {"80", "80", "7F"}}}), {.is_signed = true});
    EXPECT_EQ(attribute_of(svg, "zero", "d"), "M96 195.51H920");
    EXPECT_EQ(attribute_of(svg, "bar", "d"), "M96 195.51V322H645.33V70H920V195.51Z");
    const std::string far = draw_svg(memory_of(8, 2, {{0, 1, {"C0", "C1"}}}));
    EXPECT_EQ(attribute_of(far, "zero", "d"), "");
    EXPECT_EQ(attribute_of(far, "bar", "d"), "M96 322H508V70H920V322Z");
}

TEST(SvgPicture, AreaAcrossZeroHasNoBar) {
    const std::string svg = draw_svg(memory_of(8, 3296, {{0, 3295, {"80", "7F"}}}), {.is_signed = true});
    EXPECT_EQ(attribute_of(svg, "bar", "d"), "M96 195.51H920V195.51Z");
    EXPECT_THAT(texts_of(svg, "legend"), ElementsAre("value", "least to greatest", "set, words differ"));
}

TEST(SvgPicture, WordsWithDontCareBitsHaveABand) {
    const std::string svg = draw_svg(memory_of(8, 4, {{0, 3, {"01", "XX", "02", "03"}}}));
    EXPECT_THAT(attributes_of(svg, "care", "d"), ElementsAre("M302 64H508v264H302z", "M302 336H508v14H302z"));
    EXPECT_THAT(texts_of(svg, "legend"), ElementsAre("value", "don't care", "set, words differ"));
}

TEST(SvgPicture, StretchesHaveFramesAndCellsOfTheirOwn) {
    const std::string word(32, 'F');
    const std::string svg = draw_svg(memory_of(128, 100'000, {{0, 3, {word}}, {50'000, 50'003, {word}}}));
    EXPECT_EQ(fault_of_xml(svg), std::nullopt);
    EXPECT_EQ(attributes_of(svg, "bits", "transform").size(), 3);
    EXPECT_EQ(attributes_of(svg, "all", "d").size(), 2);
    EXPECT_EQ(attributes_of(svg, "all", "d")[0], attributes_of(svg, "all", "d")[1]);
}

TEST(SvgPicture, LongLabelsOfValuesMakeThePageWider) {
    const auto page_left = [](std::uint32_t width, std::string_view greatest) {
        return attribute_of(draw_svg(memory_of(width, 2, {{0, 1, {"0", greatest}}})), "page", "x");
    };
    EXPECT_EQ(page_left(8, "FF"), "0");
    EXPECT_LT(std::stod(page_left(64, "FFFFFFFFFFFFFFFF")), -50);
}

TEST(SvgPicture, LinesThatAreTooLongHaveSmallerLetters) {
    const std::string wide = draw_svg(memory_of(8, 2, {}), {.name = std::string(80, 'W')});
    EXPECT_NE(wide.find("style=\"font-size:"), std::string::npos);
    const std::string narrow = draw_svg(memory_of(8, 2, {}), {.name = "\xC3\xA4 1.mif"});
    EXPECT_EQ(narrow.find("font-size:", narrow.find("</style>")), std::string::npos);
    EXPECT_THAT(texts_of(narrow, "name"), ElementsAre("\xC3\xA4 1.mif"));
}

TEST(SvgPicture, AllColoursAreThoseOfTheStyleSheetWhichHasDarkOnes) {
    const std::string svg = draw_svg(memory_of(8, 2, {{0, 1, {"01"}}}));
    EXPECT_NE(svg.find("@media (prefers-color-scheme:dark){"), std::string::npos);
    EXPECT_EQ(svg.find("fill=\""), std::string::npos);
    EXPECT_EQ(svg.find("stroke=\""), std::string::npos);
}

} // namespace

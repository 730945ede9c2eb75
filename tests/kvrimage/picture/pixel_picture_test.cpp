#include "kvrimage/picture/pixel_picture.h"
#include "tests/kvrimage/picture/well_formed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

namespace {

using namespace kvrimage;
using testing::HasSubstr;
using testing::Not;

/// Two rows of two pixels: dark and bright, bright and a gap.
memory_image small_image() {
    memory_image image(8, 4);
    image.set(0, word::of(0, 8));
    image.set(1, word::of(255, 8));
    image.set(2, word::of(255, 8));
    return image;
}

constexpr pixel_layout two_gray = {2, pixel_format::gray8};

std::string in_ascii_characters(const memory_image& image, const pixel_layout& layout,
                                const picture_options& options = {}) {
    return draw_pixels_in_characters(image, options, layout, {});
}

TEST(DrawPixelsInCharacters, ShowsTheMeanOfTwoRows) {
    EXPECT_EQ(in_ascii_characters(small_image(), two_gray),
              "4 words of 8 bits, rows of 2 pixels gray8\n=@\n");
    EXPECT_EQ(draw_pixels_in_characters(small_image(), {}, two_gray, {80, true, {}}),
              "4 words of 8 bits, rows of 2 pixels gray8\n▒█\n");
}

TEST(DrawPixelsInCharacters, ShowsGaps) {
    EXPECT_EQ(in_ascii_characters(memory_image(8, 4), two_gray),
              "4 words of 8 bits, rows of 2 pixels gray8\n~~\n");
    EXPECT_EQ(draw_pixels_in_characters(memory_image(8, 4), {}, two_gray, {80, true, {}}),
              "4 words of 8 bits, rows of 2 pixels gray8\n··\n");
    memory_image image(8, 2);
    image.set(1, word::parse("X", radix::hex, 8).value.value());
    EXPECT_EQ(in_ascii_characters(image, two_gray), "2 words of 8 bits, rows of 2 pixels gray8\n~~\n");
}

TEST(DrawPixelsInCharacters, ShowsTheRowBelowAGap) {
    memory_image image(8, 4);
    image.fill({2, 3}, std::array{word::of(255, 8)});
    EXPECT_EQ(in_ascii_characters(image, two_gray), "4 words of 8 bits, rows of 2 pixels gray8\n@@\n");
}

TEST(DrawPixelsInCharacters, CutsBlanksAtTheEndOfLines) {
    memory_image image(8, 2);
    image.fill({0, 1}, std::array{word::of(0, 8)});
    EXPECT_EQ(in_ascii_characters(image, two_gray), "2 words of 8 bits, rows of 2 pixels gray8\n\n");
}

TEST(DrawPixelsInCharacters, NamesTheMemory) {
    EXPECT_THAT(
        in_ascii_characters(small_image(), two_gray, {.name = "a/\xC3\xA9.mif", .format_title = "MIF"}),
        HasSubstr("?.mif  MIF, 4 words of 8 bits, rows of 2 pixels gray8\n"));
    EXPECT_THAT(draw_pixels_in_characters(small_image(), {.name = "\xC3\xA9.mif"}, two_gray, {80, true, {}}),
                HasSubstr("\xC3\xA9.mif  4 words"));
}

TEST(DrawPixelsInCharacters, AsksForColours) {
    const auto name_of = [](const std::optional<color>& shown) {
        return shown ? std::to_string(shown->red) : std::string("-");
    };
    const pixel_screen screen = {80, true, [&name_of](const auto& upper, const auto& lower) {
                                     return "(" + name_of(upper) + " " + name_of(lower) + ")";
                                 }};
    memory_image image = small_image();
    image.resize(6);
    image.set(5, word::of(127, 8));
    EXPECT_THAT(draw_pixels_in_characters(image, {}, two_gray, screen),
                HasSubstr("\n(0 255)(255 -)\n(- -)(127 -)\n"));
}

TEST(DrawPixelsInCharacters, ShowsARange) {
    EXPECT_EQ(in_ascii_characters(small_image(), two_gray, {.range = address_range{1, 2}}),
              "4 words of 8 bits, addresses 0x1 to 0x2, rows of 2 pixels gray8\n@@\n");
    EXPECT_THROW(in_ascii_characters(small_image(), two_gray, {.range = address_range{1, 4}}),
                 std::out_of_range);
}

TEST(DrawPixelsInCharacters, ShowsEverySecondPixelOfAWidePicture) {
    memory_image image(1, 12);
    image.fill({0, 11}, std::array{word::of(1, 1), word::of(0, 1)});
    EXPECT_EQ(draw_pixels_in_characters(image, {}, {6, pixel_format::mono}, {3, false, {}}),
              "12 words of 1 bit, rows of 6 pixels mono\none pixel of each 2 x 2 is shown\n@@@\n");
}

TEST(DrawPixelsInCharacters, TakesBillionsOfWords) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{word::of(255, 8)});
    const std::string drawn =
        draw_pixels_in_characters(image, {}, {65536, pixel_format::gray8}, {80, false, {}});
    EXPECT_LT(drawn.size(), 100'000U);
    EXPECT_THAT(drawn, HasSubstr("one pixel of each 820 x 820 is shown\n@@@"));
}

TEST(DrawPixelsInCharacters, RefusesWhatCannotBeDrawn) {
    EXPECT_THROW(in_ascii_characters(small_image(), {0, pixel_format::gray8}), std::invalid_argument);
    EXPECT_THROW(in_ascii_characters(small_image(), {2, pixel_format::rgb444}), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(draw_pixels_in_characters(small_image(), {}, two_gray, {0, false, {}})),
                 std::invalid_argument);
}

TEST(DrawPixelsSvg, HoldsThePicture) {
    const std::string drawn = draw_pixels_svg(small_image(), {.name = "a.mif"}, two_gray);
    EXPECT_EQ(fault_of_xml(drawn), std::nullopt);
    EXPECT_THAT(drawn, HasSubstr("<title>a.mif: 4 words of 8 bits, rows of 2 pixels gray8</title>"));
    EXPECT_THAT(drawn, HasSubstr("width=\"824\" height=\"824\" preserveAspectRatio"));
    EXPECT_THAT(drawn, HasSubstr("href=\"data:image/png;base64,iVBORw0KGgo"));
    EXPECT_THAT(drawn, HasSubstr(">0</text>"));
    EXPECT_THAT(drawn, HasSubstr(">2</text>"));
}

TEST(DrawPixelsSvg, LabelsOneRowOnce) {
    const std::string drawn = draw_pixels_svg(small_image(), {}, {1000, pixel_format::mono});
    EXPECT_EQ(fault_of_xml(drawn), std::nullopt);
    EXPECT_THAT(drawn, HasSubstr("<title>4 words"));
    EXPECT_THAT(drawn, HasSubstr(">0</text>"));
    EXPECT_THAT(drawn, Not(HasSubstr("class=\"name\" x")));
}

TEST(DrawPixelsSvg, LabelsNoRowsThatAreTooFlat) {
    EXPECT_THAT(draw_pixels_svg(memory_image(8, 2000), {}, {1000, pixel_format::gray8}),
                Not(HasSubstr(">3E8</text>")));
}

TEST(DrawPixelsSvg, IsBoundedForAnyMemory) {
    memory_image image(24, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{word::of(0x123456, 24), word::of(0xABCDEF, 24)});
    const std::string drawn = draw_pixels_svg(image, {}, {65536, pixel_format::rgb888});
    EXPECT_LT(drawn.size(), 1'500'000U);
    EXPECT_THAT(drawn, HasSubstr("; one pixel of each 128 x 128 is shown"));
    EXPECT_LT(draw_pixels_svg(image, {.range = address_range{0, (1U << 18U) - 1}}, {1, pixel_format::rgb888})
                  .size(),
              2'000'000U)
        << "a row has a byte beside its pixels";
}

} // namespace

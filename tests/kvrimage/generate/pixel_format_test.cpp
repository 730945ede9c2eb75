#include "kvrimage/generate/pixel_format.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace kvrimage;

TEST(PixelFormat, IsFoundByItsName) {
    EXPECT_EQ(pixel_format_of_name("rgb332"), pixel_format::rgb332);
    EXPECT_EQ(pixel_format_of_name("mono"), pixel_format::mono);
    EXPECT_EQ(pixel_format_of_name("rgb"), std::nullopt);
}

TEST(PixelFormat, HasBits) {
    EXPECT_EQ(bits_of(pixel_format::rgb332), 8U);
    EXPECT_EQ(bits_of(pixel_format::rgb444), 12U);
    EXPECT_EQ(bits_of(pixel_format::rgb565), 16U);
    EXPECT_EQ(bits_of(pixel_format::rgb888), 24U);
    EXPECT_EQ(bits_of(pixel_format::gray8), 8U);
    EXPECT_EQ(bits_of(pixel_format::gray4), 4U);
    EXPECT_EQ(bits_of(pixel_format::mono), 1U);
}

TEST(PixelOf, PutsRedOnTop) {
    const color orange = {255, 128, 0};
    EXPECT_EQ(pixel_of(orange, pixel_format::rgb332), 0b111'100'00U);
    EXPECT_EQ(pixel_of(orange, pixel_format::rgb444), 0xF80U);
    EXPECT_EQ(pixel_of(orange, pixel_format::rgb565), 0b11111'100000'00000U);
    EXPECT_EQ(pixel_of(orange, pixel_format::rgb888), 0xFF8000U);
}

TEST(PixelOf, IsTheBrightnessOfColours) {
    EXPECT_EQ(pixel_of({255, 0, 0}, pixel_format::gray8), 76U);
    EXPECT_EQ(pixel_of({0, 255, 0}, pixel_format::gray8), 150U);
    EXPECT_EQ(pixel_of({0, 0, 255}, pixel_format::gray8), 29U);
    EXPECT_EQ(pixel_of({0, 255, 0}, pixel_format::gray4), 9U);
    EXPECT_EQ(pixel_of({0, 255, 0}, pixel_format::mono), 1U);
    EXPECT_EQ(pixel_of({127, 127, 127}, pixel_format::mono), 0U);
    EXPECT_EQ(pixel_of({128, 128, 128}, pixel_format::mono), 1U);
}

TEST(ColorOf, IgnoresHigherBits) {
    EXPECT_EQ(color_of(0xFFF, pixel_format::gray4), (color{255, 255, 255}));
    EXPECT_EQ(color_of(0xA00F80, pixel_format::rgb444), (color{255, 136, 0}));
}

/// Every channel value in every number of bits, compared with floating point.
TEST(PixelOf, IsTheNearestInEveryChannel) {
    for (unsigned value = 0; value < 256; ++value) {
        const auto channel = static_cast<std::uint8_t>(value);
        const auto nearest = [value](unsigned top) {
            return static_cast<unsigned>(std::lround(value * static_cast<double>(top) / 255));
        };
        const color gray = {channel, channel, channel};
        EXPECT_EQ(pixel_of(gray, pixel_format::rgb332), nearest(7) << 5U | nearest(7) << 2U | nearest(3));
        EXPECT_EQ(pixel_of(gray, pixel_format::rgb565), nearest(31) << 11U | nearest(63) << 5U | nearest(31));
        EXPECT_EQ(pixel_of(gray, pixel_format::rgb444), nearest(15) << 8U | nearest(15) << 4U | nearest(15));
        EXPECT_EQ(pixel_of(gray, pixel_format::gray8), value);
        EXPECT_EQ(pixel_of(gray, pixel_format::gray4), nearest(15));
    }
}

TEST(ColorOf, IsUndoneByPixelOf) {
    for (std::size_t index = 0; index < pixel_format_names.size(); ++index) {
        const auto format = static_cast<pixel_format>(index);
        const std::uint32_t step = bits_of(format) > 16 ? 4099 : 1;
        for (std::uint32_t pixel = 0; pixel < 1U << bits_of(format); pixel += step) {
            ASSERT_EQ(pixel_of(color_of(pixel, format), format), pixel) << pixel_format_names[index];
        }
    }
}

} // namespace

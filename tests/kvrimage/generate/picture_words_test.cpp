#include "kvrimage/generate/picture_words.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <stdexcept>

namespace {

using namespace kvrimage;

constexpr color black_pixel = {0, 0, 0};
constexpr color white_pixel = {255, 255, 255};
constexpr color red_pixel = {255, 0, 0};
constexpr color blue_pixel = {0, 0, 255};

std::vector<std::uint64_t> numbers_of_words(const memory_image& image) {
    std::vector<std::uint64_t> found(image.depth());
    image.copy_to(0, found);
    return found;
}

raster random_raster(std::mt19937_64& random, unsigned colors) {
    std::vector<color> palette(colors);
    for (color& each : palette) {
        each = {static_cast<std::uint8_t>(random()), static_cast<std::uint8_t>(random()),
                static_cast<std::uint8_t>(random())};
    }
    raster made{static_cast<std::uint32_t>(1 + random() % 9), {}};
    made.pixels.resize(made.columns * (1 + random() % 9));
    std::ranges::generate(made.pixels, [&] { return palette[random() % colors]; });
    return made;
}

TEST(PictureWords, ComeRowByRow) {
    const memory_image made =
        picture_words({2, {red_pixel, white_pixel, blue_pixel, black_pixel}}, {pixel_format::rgb565});
    EXPECT_EQ(made.width(), 16U);
    EXPECT_EQ(numbers_of_words(made), (std::vector<std::uint64_t>{0xF800, 0xFFFF, 0x001F, 0}));
}

TEST(PictureWords, MayBeWiderThanPixels) {
    const memory_image made =
        picture_words({1, {red_pixel, white_pixel}}, {.format = pixel_format::mono, .width = 70});
    EXPECT_EQ(made.width(), 70U);
    EXPECT_EQ(numbers_of_words(
                  picture_words({1, {red_pixel, white_pixel}}, {.format = pixel_format::mono, .width = 9})),
              (std::vector<std::uint64_t>{0, 1}));
}

TEST(PictureWords, RefuseWhatIsNoPicture) {
    EXPECT_THROW(static_cast<void>(picture_words({0, {red_pixel}}, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(picture_words({1, {}}, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(picture_words({2, {red_pixel, red_pixel, red_pixel}}, {})),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(picture_words({1, {red_pixel}}, {.width = 15})), std::invalid_argument);
}

TEST(PictureWords, AgreeWithEachPixel) {
    std::mt19937_64 random(3);
    for (int round = 0; round < rounds(200); ++round) {
        const raster picture = random_raster(random, 30);
        const auto format = static_cast<pixel_format>(random() % pixel_format_names.size());
        const std::vector<std::uint64_t> words = numbers_of_words(picture_words(picture, {format}));
        ASSERT_EQ(words.size(), picture.pixels.size());
        for (std::size_t index = 0; index < words.size(); ++index) {
            ASSERT_EQ(words[index], pixel_of(picture.pixels[index], format));
        }
    }
}

TEST(PictureWords, AreDithered) {
    const raster gray = {4, std::vector<color>(8, color{128, 128, 128})};
    EXPECT_EQ(numbers_of_words(picture_words(gray, {.format = pixel_format::mono, .dither = true})),
              (std::vector<std::uint64_t>{1, 0, 1, 0, 0, 1, 0, 1}));
}

/// Floyd-Steinberg dithering with a table of the whole picture.
std::vector<std::uint64_t> dithered_by_the_book(const raster& picture, pixel_format format) {
    const std::size_t columns = picture.columns;
    const std::size_t rows = picture.pixels.size() / columns;
    std::vector<std::array<int, 3>> debts(picture.pixels.size());
    std::vector<std::uint64_t> words;
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            const std::size_t at = row * columns + column;
            const color& wanted = picture.pixels[at];
            std::array<int, 3> exact = {wanted.red, wanted.green, wanted.blue};
            for (std::size_t part = 0; part < 3; ++part) {
                exact[part] = std::clamp(exact[part] + debts[at][part] / 16, 0, 255);
            }
            const color asked = {static_cast<std::uint8_t>(exact[0]), static_cast<std::uint8_t>(exact[1]),
                                 static_cast<std::uint8_t>(exact[2])};
            words.push_back(pixel_of(asked, format));
            const color shown = color_of(static_cast<std::uint32_t>(words.back()), format);
            const std::array<int, 3> seen = {shown.red, shown.green, shown.blue};
            const auto owe = [&](int down, int right, int share) {
                const auto to = static_cast<std::ptrdiff_t>(column) + right;
                if (row + static_cast<std::size_t>(down) < rows && to >= 0 &&
                    to < static_cast<std::ptrdiff_t>(columns)) {
                    for (std::size_t part = 0; part < 3; ++part) {
                        debts[(row + static_cast<std::size_t>(down)) * columns + static_cast<std::size_t>(to)]
                             [part] += share * (exact[part] - seen[part]);
                    }
                }
            };
            owe(0, 1, 7);
            owe(1, -1, 3);
            owe(1, 0, 5);
            owe(1, 1, 1);
        }
    }
    return words;
}

TEST(PictureWords, AreDitheredByTheBook) {
    std::mt19937_64 random(4);
    for (int round = 0; round < rounds(200); ++round) {
        const raster picture = random_raster(random, 20);
        const auto format = static_cast<pixel_format>(random() % pixel_format_names.size());
        ASSERT_EQ(numbers_of_words(picture_words(picture, {.format = format, .dither = true})),
                  dithered_by_the_book(picture, format));
    }
}

TEST(IndexedPictureWords, NumberTheColoursInOrder) {
    const indexed_words made = indexed_picture_words({2, {white_pixel, red_pixel, blue_pixel, red_pixel}}, 4,
                                                     {.format = pixel_format::rgb888});
    EXPECT_EQ(made.indexes.width(), 2U);
    EXPECT_EQ(made.palette.width(), 24U);
    EXPECT_EQ(numbers_of_words(made.palette), (std::vector<std::uint64_t>{0xFF, 0xFF0000, 0xFFFFFF, 0}));
    EXPECT_EQ(numbers_of_words(made.indexes), (std::vector<std::uint64_t>{2, 1, 0, 1}));
}

TEST(IndexedPictureWords, GroupColoursThatAreTooMany) {
    const color dark_red = {250, 0, 0};
    const color dark_blue = {0, 0, 250};
    const indexed_words made = indexed_picture_words({2, {red_pixel, dark_red, blue_pixel, dark_blue}}, 2,
                                                     {.format = pixel_format::rgb888});
    EXPECT_EQ(numbers_of_words(made.palette), (std::vector<std::uint64_t>{0xFD, 0xFD0000}));
    EXPECT_EQ(numbers_of_words(made.indexes), (std::vector<std::uint64_t>{1, 1, 0, 0}));
}

TEST(IndexedPictureWords, HaveTheBitsOfTheHighestNumber) {
    const raster picture = {1, {red_pixel, blue_pixel}};
    EXPECT_EQ(indexed_picture_words(picture, 2, {}).indexes.width(), 1U);
    EXPECT_EQ(indexed_picture_words(picture, 3, {}).indexes.width(), 2U);
    EXPECT_EQ(indexed_picture_words(picture, 256, {}).indexes.width(), 8U);
    EXPECT_EQ(indexed_picture_words(picture, 16, {.width = 8}).indexes.width(), 8U);
    EXPECT_THROW(static_cast<void>(indexed_picture_words(picture, 16, {.width = 3})), std::invalid_argument);
}

TEST(IndexedPictureWords, RefuseOtherNumbersOfColours) {
    EXPECT_THROW(static_cast<void>(indexed_picture_words({1, {red_pixel}}, 1, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(indexed_picture_words({1, {red_pixel}}, 257, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(indexed_picture_words({1, {}}, 2, {})), std::invalid_argument);
}

TEST(IndexedPictureWords, TakeOneColourOfWhichGroupsCannotBeDivided) {
    // In mono, both of the first colors are dark; white_pixel is another color.
    const indexed_words made = indexed_picture_words({2, {{1, 1, 1}, {2, 2, 2}, white_pixel, white_pixel}}, 2,
                                                     {.format = pixel_format::mono});
    EXPECT_EQ(numbers_of_words(made.indexes), (std::vector<std::uint64_t>{0, 0, 1, 1}));
}

TEST(IndexedPictureWords, TakeTheNearestColour) {
    std::mt19937_64 random(5);
    const auto distance = [](const color& left, const color& right) {
        const int reds = left.red - right.red;
        const int greens = left.green - right.green;
        const int blues = left.blue - right.blue;
        return reds * reds + greens * greens + blues * blues;
    };
    for (int round = 0; round < rounds(100); ++round) {
        const raster picture = random_raster(random, 40);
        const auto colors = static_cast<std::uint32_t>(2 + random() % 10);
        const indexed_words made = indexed_picture_words(picture, colors, {.format = pixel_format::rgb888});
        const std::vector<std::uint64_t> palette = numbers_of_words(made.palette);
        const std::vector<std::uint64_t> indexes = numbers_of_words(made.indexes);
        const std::size_t used = 1 + *std::ranges::max_element(indexes);
        for (std::size_t index = 0; index < indexes.size(); ++index) {
            const auto shown = [&](std::uint64_t number) {
                return color_of(static_cast<std::uint32_t>(palette[number]), pixel_format::rgb888);
            };
            const int taken = distance(shown(indexes[index]), picture.pixels[index]);
            for (std::size_t other = 0; other < used; ++other) {
                ASSERT_LE(taken, distance(shown(other), picture.pixels[index]));
            }
        }
    }
}

TEST(IndexedPictureWords, AreDithered) {
    const raster gray = {4, {black_pixel, white_pixel, {128, 128, 128}, {128, 128, 128}}};
    const std::vector<std::uint64_t> found = numbers_of_words(
        indexed_picture_words(gray, 2, {.format = pixel_format::mono, .dither = true}).indexes);
    EXPECT_EQ(found, (std::vector<std::uint64_t>{0, 1, 1, 0}));
}

} // namespace

#include "kvrimage/generate/picture_words.h"

#include "kvrimage/generate/color_groups.h"
#include "kvrimage/generate/dithering.h"
#include "kvrimage/generate/word_bytes.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <unordered_map>

namespace kvrimage {

namespace {

void require_pixels(const raster& picture) {
    if (picture.pixels.empty() || picture.columns == 0 || picture.pixels.size() % picture.columns != 0) {
        throw std::invalid_argument(
            fmt::format("a picture of {} pixels in rows of {}", picture.pixels.size(), picture.columns));
    }
}

/// Returns the distinct pixels of @p colors in ascending order.
std::vector<std::uint32_t> distinct_pixels(std::span<const color> colors, pixel_format format) {
    std::vector<std::uint32_t> pixels(colors.size());
    std::ranges::transform(colors, pixels.begin(),
                           [format](const color& each) { return pixel_of(each, format); });
    std::ranges::sort(pixels);
    pixels.erase(std::unique(pixels.begin(), pixels.end()), pixels.end());
    return pixels;
}

/// Finds the nearest color of a palette. It computes the result once for each color.
class palette_search {
public:
    palette_search(std::span<const std::uint32_t> palette, pixel_format format) {
        for (const std::uint32_t pixel : palette) {
            colors.push_back(color_of(pixel, format));
        }
    }
    [[nodiscard]] const color& operator[](std::uint32_t index) const { return colors[index]; }

    std::uint32_t nearest(const color& to) {
        const std::uint32_t key = std::uint32_t{to.red} << 16U | std::uint32_t{to.green} << 8U | to.blue;
        const auto [known, is_new] = found.try_emplace(key);
        if (is_new) {
            const auto best = std::ranges::min_element(
                colors, {}, [&to](const color& each) { return squared_distance(each, to); });
            known->second = static_cast<std::uint32_t>(best - colors.begin());
        }
        return known->second;
    }

private:
    static int squared_distance(const color& left, const color& right) noexcept {
        const int red = left.red - right.red;
        const int green = left.green - right.green;
        const int blue = left.blue - right.blue;
        return red * red + green * green + blue * blue;
    }

    std::vector<color> colors;
    std::unordered_map<std::uint32_t, std::uint32_t> found;
};

/// Makes an empty builder for the words of @p picture, which need @p bits bits each.
generated_words words_for(const raster& picture, const picture_rules& rules, std::uint32_t bits) {
    const std::uint32_t width = rules.width.value_or(bits);
    if (width < bits) {
        throw std::invalid_argument(fmt::format("pixels of {} bits do not fit words of {}", bits, width));
    }
    return {width, picture.pixels.size()};
}

} // namespace

memory_image picture_words(const raster& picture, const picture_rules& rules) {
    require_pixels(picture);
    generated_words words = words_for(picture, rules, bits_of(rules.format));
    dithering spread(picture.columns, rules.dither);
    for (const color& wanted : picture.pixels) {
        const std::uint32_t pixel = pixel_of(spread.next(wanted), rules.format);
        spread.show(color_of(pixel, rules.format));
        words.add(pixel);
    }
    return words.take();
}

indexed_words indexed_picture_words(const raster& picture, std::uint32_t colors, const picture_rules& rules) {
    require_pixels(picture);
    if (colors < 2 || colors > most_palette_colors) {
        throw std::invalid_argument(
            fmt::format("a palette of {} colors: it has 2 to {}", colors, most_palette_colors));
    }
    std::vector<std::uint32_t> pixels = distinct_pixels(picture.pixels, rules.format);
    if (pixels.size() > colors) {
        pixels = distinct_pixels(grouped_colors(picture.pixels, colors), rules.format);
    }
    generated_words palette(bits_of(rules.format), colors);
    for (std::size_t index = 0; index < colors; ++index) {
        palette.add(index < pixels.size() ? pixels[index] : 0);
    }
    generated_words indexes = words_for(picture, rules, bits_of_indexes(colors));
    palette_search search(pixels, rules.format);
    dithering spread(picture.columns, rules.dither);
    for (const color& wanted : picture.pixels) {
        const std::uint32_t index = search.nearest(spread.next(wanted));
        spread.show(search[index]);
        indexes.add(index);
    }
    return {indexes.take(), palette.take()};
}

} // namespace kvrimage

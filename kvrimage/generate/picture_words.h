#pragma once

#include "kvrimage/export.h"
#include "kvrimage/generate/pixel_format.h"
#include "kvrimage/image/memory_image.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <vector>

namespace kvrimage {

/// The pixels of a picture.
struct raster {
    std::uint32_t columns = 0; ///< pixels in a row, at least 1
    std::vector<color> pixels; ///< row by row from the top, each from the left; at least one row, and whole
                               ///< rows only
};

/// A picture with a palette.
struct indexed_words {
    memory_image indexes; ///< one word for each pixel: the number of its color
    memory_image palette; ///< one word for each color; unused entries are 0
};

/// The most colors of a palette.
inline constexpr std::uint32_t most_palette_colors = 256;

/// Returns the bits of an index into @p colors colors.
/// @param colors at least 2
[[nodiscard]] constexpr std::uint32_t bits_of_indexes(std::uint32_t colors) noexcept {
    return std::bit_width(colors - 1);
}

/// How a picture is converted to words.
struct picture_rules {
    pixel_format format = pixel_format::rgb565; ///< of a pixel, or of a color of the palette
    /// Spreads the error of each pixel over its neighbors (Floyd and Steinberg): 7/16 to the right, and 3/16,
    /// 5/16 and 1/16 to the row below.
    bool dither = false;
    /// Word width in bits, at least the bits of a pixel or of an index; without it exactly these. Surplus
    /// bits are 0.
    std::optional<std::uint32_t> width = std::nullopt;
};

/// Converts @p picture to one word for each pixel, in the order of the pixels.
/// @throws std::invalid_argument if @p picture has no pixels or an incomplete row, or if the width is too
/// small or above widest_word
[[nodiscard]] KVRIMAGE_API memory_image picture_words(const raster& picture, const picture_rules& rules);

/// Converts @p picture to indexes into a palette of @p colors colors. If the picture has no more colors in
/// the pixel format, they are the palette, in ascending order of their words. Otherwise median cut divides
/// the pixels into groups, and the palette has the mean of each group. Each pixel becomes the index of the
/// nearest color. The words of the palette have the width of the pixel format.
/// @param colors 2 to most_palette_colors
/// @throws std::invalid_argument if @p colors is out of range, and as picture_words() does
[[nodiscard]] KVRIMAGE_API indexed_words indexed_picture_words(const raster& picture, std::uint32_t colors,
                                                               const picture_rules& rules);

} // namespace kvrimage

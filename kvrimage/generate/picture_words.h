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
    std::uint32_t columns = 0; ///< pixels of a row, at least 1
    std::vector<color> pixels; ///< row by row from the top, each from the left; whole rows, at least one
};

/// A picture as the numbers of the colours of a palette.
struct indexed_words {
    memory_image indexes; ///< a word for each pixel
    memory_image palette; ///< the colours, a word each; those that are not needed are 0
};

/// The most colours of a palette.
inline constexpr std::uint32_t most_palette_colors = 256;

/// Bits that the number of each of @p colors colours needs.
/// @param colors at least 2
[[nodiscard]] constexpr std::uint32_t bits_of_indexes(std::uint32_t colors) noexcept {
    return std::bit_width(colors - 1);
}

/// How a picture becomes words.
struct picture_rules {
    pixel_format format = pixel_format::rgb565; ///< of a pixel, or of a colour of the palette
    /// Spreads what cannot be shown over the neighbours (Floyd and Steinberg): 7/16 to the right, and 3/16,
    /// 5/16 and 1/16 to the row below.
    bool dither = false;
    /// Bits of the words, at least those of a pixel or of the highest number; nothing: as many as these.
    /// Further ones are 0.
    std::optional<std::uint32_t> width = std::nullopt;
};

/// A word for each pixel of @p picture, in the order of its pixels.
/// @throws std::invalid_argument when @p picture has no pixels, or no whole rows, and for words too narrow or
/// wider than widest_word
[[nodiscard]] KVRIMAGE_API memory_image picture_words(const raster& picture, const picture_rules& rules);

/// The same with a palette of @p colors colours, whose words have the bits of their format. Where the picture
/// has no more colours in this format, these are the palette, in ascending order of their words; else its
/// colours are divided at medians until they are so many groups, and each group is the mean of its pixels. A
/// pixel is the nearest colour of the palette.
/// @param colors 2 to most_palette_colors
/// @throws std::invalid_argument for another number of colours, and as picture_words() does
[[nodiscard]] KVRIMAGE_API indexed_words indexed_picture_words(const raster& picture, std::uint32_t colors,
                                                               const picture_rules& rules);

} // namespace kvrimage

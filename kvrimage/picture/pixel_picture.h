#pragma once

#include "kvrimage/export.h"
#include "kvrimage/generate/pixel_format.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/picture/picture.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace kvrimage {

/// How the words of a memory form the pixels of a picture.
struct pixel_layout {
    std::uint32_t columns = 1;                  ///< words in a row, at least 1
    pixel_format format = pixel_format::rgb565; ///< format of a pixel, in the lowest bits of a word
};

/// Draws the words of @p image as pixels, row by row from the top, as an SVG document in UTF-8, below 2 MB
/// for any memory. Words that are not set, have don't-care bits, or need more than 64 bits are gaps. A
/// picture of more than 2^18 pixels shows only each second pixel in both directions, or each third and so on,
/// and says so. Takes time proportional to the pixels shown. `is_signed` of @p options has no effect.
/// @throws std::out_of_range if the range of @p options exceeds the memory, or ends before it begins
/// @throws std::invalid_argument if @p layout has no columns, or if its pixels have more bits than the words
[[nodiscard]] KVRIMAGE_API std::string
draw_pixels_svg(const memory_image& image, const picture_options& options, const pixel_layout& layout);

/// The screen for pixels in characters. A character shows two pixels, one above the other.
struct pixel_screen {
    std::uint32_t columns = 80; ///< at least 1
    bool has_blocks = false;    ///< shades are block characters of Unicode, in UTF-8; otherwise ASCII
    /// Returns the character for two pixels (nothing is a gap) in their colors, for example a half block
    /// between two escape sequences. Empty: characters show the mean brightness of the two pixels.
    std::function<std::string(const std::optional<color>& upper, const std::optional<color>& lower)> paint =
        {};
};

/// Draws the same picture as lines of text, with at most 2^16 pixels and the columns of @p screen. Only
/// titles and notes may be longer than the screen.
/// @throws std::out_of_range, std::invalid_argument as draw_pixels_svg() does
/// @throws std::invalid_argument if the screen has no columns
[[nodiscard]] KVRIMAGE_API std::string draw_pixels_in_characters(const memory_image& image,
                                                                 const picture_options& options,
                                                                 const pixel_layout& layout,
                                                                 const pixel_screen& screen);

} // namespace kvrimage

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

/// How the words of a memory are the pixels of a picture.
struct pixel_layout {
    std::uint32_t columns = 1;                  ///< words of a row, at least 1
    pixel_format format = pixel_format::rgb565; ///< of their lowest bits
};

/// The picture that the words of @p image are, row by row from the top: an SVG document in UTF-8, below 2
/// MB for any memory. Words that are not set or have don't-care bits are gaps; so are those whose value needs
/// more than 64 bits. A picture of more than 2^18 pixels is made of every second one in both directions,
/// every third, and so on, and says so; the cost follows the pixels that are shown. `is_signed` of @p options
/// has no effect.
/// @throws std::out_of_range when the range of @p options is not in the memory, or ends before it begins
/// @throws std::invalid_argument when @p layout has no columns, or its pixels more bits than the words
[[nodiscard]] KVRIMAGE_API std::string
draw_pixels_svg(const memory_image& image, const picture_options& options, const pixel_layout& layout);

/// How pixels are shown in characters, one of which stands for two pixels, one above the other.
struct pixel_screen {
    std::uint32_t columns = 80; ///< at least 1
    bool has_blocks = false;    ///< shades are block characters of Unicode, in UTF-8; else ASCII
    /// The character for two pixels, of which nothing is a gap, in their colours: for example a half block
    /// between two escape sequences. Nothing: characters show the mean brightness of the two.
    std::function<std::string(const std::optional<color>& upper, const std::optional<color>& lower)> paint =
        {};
};

/// The same picture as lines of text, with at most 2^16 pixels and as many columns as @p screen. No line but
/// those of titles and notes is longer than the screen.
/// @throws std::out_of_range, std::invalid_argument as draw_pixels_svg() does, and the latter for a screen
/// without columns
[[nodiscard]] KVRIMAGE_API std::string draw_pixels_in_characters(const memory_image& image,
                                                                 const picture_options& options,
                                                                 const pixel_layout& layout,
                                                                 const pixel_screen& screen);

} // namespace kvrimage

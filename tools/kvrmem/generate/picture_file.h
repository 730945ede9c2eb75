#pragma once

#include "kvrimage/generate/picture_words.h"

#include <cstdint>
#include <string_view>

namespace kvrmem {

/// Maximum number of pixels of a picture.
inline constexpr std::uint64_t most_picture_pixels = std::uint64_t{1} << 22U;

/// A decoded picture.
struct read_picture {
    kvrimage::raster pixels;
    bool has_transparency = false; ///< transparent pixels are mixed with black
};

/// Reads a PNG, BMP or JPEG picture; the first row is the top one. The stated size is checked before pixels
/// are decoded. Memory and time are proportional to that size and to the contents.
/// @throws std::invalid_argument if it is not such a picture, is broken, has no pixels or more than
/// most_picture_pixels, or far more data than the pixels need; what() states the reason
[[nodiscard]] read_picture picture_of(std::string_view contents);

} // namespace kvrmem

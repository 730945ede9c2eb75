#pragma once

#include "kvrimage/generate/picture_words.h"

#include <cstdint>
#include <string_view>

namespace kvrmem {

/// The most pixels of a picture.
inline constexpr std::uint64_t most_picture_pixels = std::uint64_t{1} << 22U;

/// A picture that was read.
struct read_picture {
    kvrimage::raster pixels;
    bool has_transparency = false; ///< what is transparent is mixed with black
};

/// Reads a picture in PNG, BMP or JPEG; the first row is the top one. The size that it claims is checked
/// before its pixels are decoded. Memory and time are proportional to that size and to the contents.
/// @throws std::invalid_argument when it is no such picture, is broken, has no pixels or more than
/// most_picture_pixels, or holds far more data than they need; what() says what is wrong
[[nodiscard]] read_picture picture_of(std::string_view contents);

} // namespace kvrmem

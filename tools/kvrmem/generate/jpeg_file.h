#pragma once

#include "kvrimage/generate/picture_words.h"

#include <cstdint>
#include <string_view>

namespace kvrmem {

/// Reads a JPEG in gray, YCbCr or RGB. The size that it claims is checked before its pixels are decoded.
/// @throws std::invalid_argument when it is broken, cut off, in other colours, or has more than @p
/// most_pixels or 100 scans; what() says what is wrong
[[nodiscard]] kvrimage::raster jpeg_of(std::string_view contents, std::uint64_t most_pixels);

} // namespace kvrmem

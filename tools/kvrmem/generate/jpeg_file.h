#pragma once

#include "kvrimage/generate/picture_words.h"

#include <cstdint>
#include <string_view>

namespace kvrmem {

/// Reads a JPEG in gray, YCbCr or RGB. The stated size is checked before pixels are decoded.
/// @throws std::invalid_argument if it is broken, truncated, in other colors, or has more than @p most_pixels
/// or 100 scans; what() states the reason
[[nodiscard]] kvrimage::raster jpeg_of(std::string_view contents, std::uint64_t most_pixels);

} // namespace kvrmem

#pragma once

#include "kvrimage/picture/picture_contents.h"

#include <cstdint>
#include <string>

namespace kvrimage::svg {

/// Returns the resolution of a picture of words of @p width bits.
/// @param rows the most rows of a bit map, at most most_svg_rows
[[nodiscard]] picture_size size_for(std::uint32_t width, std::uint32_t rows) noexcept;

/// Returns the resolution of a picture of differences.
[[nodiscard]] picture_size difference_size() noexcept;

/// Returns @p contents, made for this size, as an SVG document, below 500 KB for any memory.
[[nodiscard]] std::string draw(const picture_contents& contents);

} // namespace kvrimage::svg

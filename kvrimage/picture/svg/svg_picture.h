#pragma once

#include "kvrimage/picture/picture_contents.h"

#include <cstdint>
#include <string>

namespace kvrimage::svg {

/// How fine the picture of words of @p width bits is.
/// @param rows of a bit map, at most; no more than most_svg_rows
[[nodiscard]] picture_size size_for(std::uint32_t width, std::uint32_t rows) noexcept;

/// How fine the picture of differences is.
[[nodiscard]] picture_size difference_size() noexcept;

/// @p contents, made for this size, as an SVG document: below 500 KB, whatever the memory holds.
[[nodiscard]] std::string draw(const picture_contents& contents);

} // namespace kvrimage::svg

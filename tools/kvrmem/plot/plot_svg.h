#pragma once

#include "tools/kvrmem/plot/plot_picture.h"

#include <cstdint>
#include <string>

namespace kvrmem {

/// How fine the picture of words of @p width bits is.
[[nodiscard]] picture_size size_for_svg(std::uint32_t width) noexcept;

/// @p picture, made for this size, as an SVG document: below 500 KB, whatever the memory holds.
[[nodiscard]] std::string draw_as_svg(const plot_picture& picture);

} // namespace kvrmem

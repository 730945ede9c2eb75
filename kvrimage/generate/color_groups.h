#pragma once

#include "kvrimage/generate/pixel_format.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kvrimage {

/// Returns the mean colors of at most @p most groups of @p pixels (at least one pixel), by median cut. The
/// group with the greatest extent in one channel is divided at the median of this channel, until there are
/// @p most groups or each group has one color.
[[nodiscard]] std::vector<color> grouped_colors(std::span<const color> pixels, std::uint32_t most);

} // namespace kvrimage

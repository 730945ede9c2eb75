#pragma once

#include "kvrimage/generate/pixel_format.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kvrimage {

/// The means of at most @p most groups of the colours of @p pixels (at least one): the group whose widest
/// channel has the greatest extent is divided at the median of that channel until there are so many, or each
/// has one colour.
[[nodiscard]] std::vector<color> grouped_colors(std::span<const color> pixels, std::uint32_t most);

} // namespace kvrimage

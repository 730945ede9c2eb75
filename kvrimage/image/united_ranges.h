#pragma once

#include "kvrimage/image/address_range.h"

#include <vector>

namespace kvrimage {

/// Returns @p ranges in order. Adjacent and overlapping ranges are merged.
[[nodiscard]] std::vector<address_range> united(std::vector<address_range> ranges);

/// Returns the addresses of @p ranges that are in none of @p holes, in order. Adjacent ranges are merged.
[[nodiscard]] std::vector<address_range> ranges_without(std::vector<address_range> ranges,
                                                        std::vector<address_range> holes);

} // namespace kvrimage

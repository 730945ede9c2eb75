#pragma once

#include "kvrimage/image/address_range.h"

#include <vector>

namespace kvrimage {

/// @p ranges in order, with neighbours and those that overlap as one.
[[nodiscard]] std::vector<address_range> united(std::vector<address_range> ranges);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/address_range.h"

#include <vector>

namespace kvrimage {

/// @p ranges in order, with neighbours and those that overlap as one.
[[nodiscard]] std::vector<address_range> united(std::vector<address_range> ranges);

/// The addresses of @p ranges that are in none of @p holes, in order, with neighbours as one range.
[[nodiscard]] std::vector<address_range> ranges_without(std::vector<address_range> ranges,
                                                        std::vector<address_range> holes);

} // namespace kvrimage

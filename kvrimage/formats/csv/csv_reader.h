#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// format::read() for CSV. Without a width it is that of the fixed-point format, else the smallest one that
/// holds all values: 4 or 1 bits for each digit of a hexadecimal or binary one, and where one is negative all
/// decimal ones as signed numbers.
[[nodiscard]] read_result read_csv(std::string_view contents, const read_options& options);

} // namespace kvrimage

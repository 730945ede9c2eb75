#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implements format::read for CSV. A missing width is that of the fixed-point format, else the smallest one
/// for all values: 4 or 1 bits for each digit of hexadecimal or binary values; decimal values count as signed
/// if one of them is negative.
[[nodiscard]] read_result read_csv(std::string_view contents, const read_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for Intel HEX: changes the digits of records to upper case, and nothing else.
[[nodiscard]] std::string lay_out_hex(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>
#include <vector>

namespace kvrimage {

/// Implements consumer::check for Intel HEX and the library kvr, which uses the width of @p ours.
[[nodiscard]] std::vector<diagnostic> check_hex_for_kvr(std::string_view contents,
                                                        const read_options& options, const read_result& ours);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for COE: each statement and the words of a statement begin a line; words are in
/// upper case with all their digits, separated by "," and a blank.
[[nodiscard]] std::string lay_out_coe(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

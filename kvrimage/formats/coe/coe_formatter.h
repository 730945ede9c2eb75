#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// format::lay_out() for COE: each statement begins a line, and so do its words, which are in upper case with
/// all their digits and have a "," and a blank between them.
[[nodiscard]] std::string lay_out_coe(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

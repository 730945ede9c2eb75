#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// format::lay_out() for MIF: each setting and each statement begins a line, the ":" of the statements stand
/// in one column, addresses have the digits that the last one needs, and words have all theirs. Values share
/// lines as they did, up to the longest line that the library kvr reads. What follows END stays as it is.
[[nodiscard]] std::string lay_out_mif(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

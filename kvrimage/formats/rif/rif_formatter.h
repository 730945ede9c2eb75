#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for RIF: words in upper case with all their digits and a blank after each,
/// addresses in lower case on lines of their own, as the library kvr writes them.
[[nodiscard]] std::string lay_out_rif(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

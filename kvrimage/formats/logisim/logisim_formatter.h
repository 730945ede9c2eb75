#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for Logisim files: words in upper case with all their digits and one blank
/// between them, addresses in lower case and of equal length; line breaks are kept.
[[nodiscard]] std::string lay_out_logisim(std::string_view contents, const read_options& options,
                                          const read_result& ours);

} // namespace kvrimage

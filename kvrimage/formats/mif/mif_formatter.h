#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for MIF. Each setting and each statement begins a line, the ":" of statements
/// are aligned, addresses have as many digits as the last one needs, and words have all their digits. Values
/// share lines as before, up to the longest line that the library kvr reads. Text after END is unchanged.
[[nodiscard]] std::string lay_out_mif(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

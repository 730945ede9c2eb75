#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for memory files with a header: settings in the spelling of the format, words
/// in upper case with all their digits, addresses with as many digits as the last one; line breaks are kept.
[[nodiscard]] std::string lay_out_memheader(std::string_view contents, const read_options& options,
                                            const read_result& ours);

} // namespace kvrimage

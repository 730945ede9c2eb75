#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// format::lay_out() for lists of words: words in upper case with all their digits, one blank between them,
/// addresses of one length at the front of lines, comments in columns.
///@{
[[nodiscard]] std::string lay_out_readmemh(std::string_view contents, const read_options& options,
                                           const read_result& ours);
[[nodiscard]] std::string lay_out_readmemb(std::string_view contents, const read_options& options,
                                           const read_result& ours);
///@}

} // namespace kvrimage

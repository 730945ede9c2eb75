#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implement format::lay_out for word lists: words in upper case with all their digits, separated by one
/// blank; addresses of equal length at the start of lines; comments aligned in columns.
///@{
[[nodiscard]] std::string lay_out_readmemh(std::string_view contents, const read_options& options,
                                           const read_result& ours);
[[nodiscard]] std::string lay_out_readmemb(std::string_view contents, const read_options& options,
                                           const read_result& ours);
///@}

} // namespace kvrimage

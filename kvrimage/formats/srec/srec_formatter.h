#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// format::lay_out() for S-records: the digits of the records become upper case, and nothing else changes.
[[nodiscard]] std::string lay_out_srec(std::string_view contents, const read_options& options,
                                       const read_result& ours);

} // namespace kvrimage

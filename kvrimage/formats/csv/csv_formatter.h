#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// format::lay_out() for CSV: no blanks or quotation marks around fields that need none; in the columns of
/// addresses and values upper-case digits after "0x", and numbers with a prefix of one length. The header and
/// the other columns keep their texts.
[[nodiscard]] std::string lay_out_csv(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

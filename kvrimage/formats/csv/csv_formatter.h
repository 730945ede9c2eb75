#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for CSV. Removes unnecessary blanks and quotation marks around fields. In the
/// address and value columns digits become upper case after "0x", and numbers with a prefix get equal length.
/// The header and other columns keep their text.
[[nodiscard]] std::string lay_out_csv(std::string_view contents, const read_options& options,
                                      const read_result& ours);

} // namespace kvrimage

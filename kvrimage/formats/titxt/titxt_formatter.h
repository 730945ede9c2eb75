#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Implements format::lay_out for TI-TXT: addresses of at least four digits on lines of their own, bytes in
/// upper case with one blank between them; line breaks are kept.
[[nodiscard]] std::string lay_out_titxt(std::string_view contents, const read_options& options,
                                        const read_result& ours);

} // namespace kvrimage

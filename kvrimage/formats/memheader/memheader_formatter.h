#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// format::lay_out() for memory files with a header: settings as the format spells them, words in upper case
/// with all their digits, addresses with those of the last one; lines end where they did.
[[nodiscard]] std::string lay_out_memheader(std::string_view contents, const read_options& options,
                                            const read_result& ours);

} // namespace kvrimage

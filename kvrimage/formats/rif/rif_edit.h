#pragma once

#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// format::edit() for RIF. A word is replaced where it stands, or where it stands last; words that the file
/// does not set go to its end, after address lines.
[[nodiscard]] edit_result edit_rif(std::string_view contents, const read_options& options,
                                   const read_result& ours, std::span<const assignment> assignments);

} // namespace kvrimage

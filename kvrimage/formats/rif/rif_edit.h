#pragma once

#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// Implements format::edit for RIF. Replaces a word at the last place that sets it. Words that the file does
/// not set are appended, after address lines.
[[nodiscard]] edit_result edit_rif(std::string_view contents, const read_options& options,
                                   const read_result& ours, std::span<const assignment> assignments);

} // namespace kvrimage

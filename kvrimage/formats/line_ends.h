#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// Returns a broken diagnostic if @p contents have line ends but no LF, so a reader would see a single line.
/// Else returns nothing, after a search for the first LF.
[[nodiscard]] std::optional<diagnostic> lines_without_lf(std::string_view contents,
                                                         const read_options& options);

} // namespace kvrimage

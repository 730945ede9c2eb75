#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// A broken diagnostic when @p contents have lines, and none of them ends with LF: what is one line to a
/// reader is not looked at. Otherwise nothing, which costs a search for the first LF.
[[nodiscard]] std::optional<diagnostic> lines_without_lf(std::string_view contents,
                                                         const read_options& options);

} // namespace kvrimage

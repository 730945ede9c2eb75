#pragma once

#include "kvrimage/diagnostics/diagnostic.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// What @p contents, in which a reader has found nothing of its format, are instead: a broken diagnostic, or
/// nothing when they are of no known kind. A reader that finds nothing of its own reports this and nothing
/// else.
[[nodiscard]] std::optional<diagnostic> foreign_content(std::string_view contents);

} // namespace kvrimage

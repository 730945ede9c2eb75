#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// Identifies @p contents in which the reader of @p expected has found nothing of its format. Returns a
/// broken diagnostic, or nothing for unknown contents. A reader reports it alone. If @p expected is null,
/// other formats are not considered.
/// @param least the least confidence in another format
[[nodiscard]] std::optional<diagnostic> foreign_content(std::string_view contents,
                                                        const format* expected = nullptr,
                                                        certainty least = certainty::likely);

/// Returns the result of a reader that reports only @p only and has read nothing.
[[nodiscard]] read_result only_finding(const format& as, std::string_view contents, diagnostic only);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// What @p contents, in which the reader of @p expected has found nothing of its format, are instead: a
/// broken diagnostic, or nothing when they are of no known kind. A reader that finds nothing of its own
/// reports this and nothing else. Null: they are of no format, and only other kinds are looked for.
/// @param least how sure another format must be
[[nodiscard]] std::optional<diagnostic> foreign_content(std::string_view contents,
                                                        const format* expected = nullptr,
                                                        certainty least = certainty::likely);

/// What a reader hands out that reports @p only, and has read nothing.
[[nodiscard]] read_result only_finding(const format& as, std::string_view contents, diagnostic only);

} // namespace kvrimage

#pragma once

#include <string>
#include <string_view>

namespace kvrmem {

/// Describes the comments of the file @p target that are missing from @p written, its replacement: "2
/// comments, the first in line 1"; "" if none is lost. A missing, unreadable or irregular file has no
/// comments.
[[nodiscard]] std::string lost_comments(const std::string& target, std::string_view written);

/// Requires that lost_comments() finds none.
/// @throws tool_error (wrong usage) with what --force would discard
void require_no_lost_comments(const std::string& target, std::string_view written);

} // namespace kvrmem

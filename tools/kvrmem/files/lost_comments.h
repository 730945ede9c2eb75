#pragma once

#include <string>
#include <string_view>

namespace kvrmem {

/// The comments of the file @p target that are not among those of @p written, which is to replace it: "2
/// comments, the first in line 1"; "" when none is lost. A target that is missing, unreadable or no regular
/// file has none.
[[nodiscard]] std::string lost_comments(const std::string& target, std::string_view written);

/// Makes sure that lost_comments() finds none.
/// @throws tool_error (wrong usage) with what --force gives up
void require_no_lost_comments(const std::string& target, std::string_view written);

} // namespace kvrmem

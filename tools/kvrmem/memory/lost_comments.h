#pragma once

#include <string>
#include <string_view>

namespace kvrmem {

/// The comments of the file @p target that are not among those of @p written, which is to replace it: "2
/// comments, the first in line 1"; "" when none is lost. A comment is, in Intel HEX, a line that does not
/// begin with ":", and in any other file the rest of a line from "--" or "%" on; the line that the tool
/// itself puts into a MIF is none. A target that is missing, unreadable or no regular file has none. The
/// memory that this takes follows @p written, not the target.
[[nodiscard]] std::string lost_comments(const std::string& target, std::string_view written);

/// Makes sure that lost_comments() finds none.
/// @throws tool_error (wrong usage) with what --force gives up.
void require_no_lost_comments(const std::string& target, std::string_view written);

} // namespace kvrmem

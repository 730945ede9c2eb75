#pragma once

#include <string>
#include <string_view>

namespace kvrmem {

/// Makes sure that no comment is lost when a file with the text @p written takes the place of the file
/// @p target: each comment of that file is a comment of @p written too. Comments are what MIF takes for them
/// ("--", "%", header lines that set nothing, what stands behind END) and, in Intel HEX, lines that are no
/// records; the line that the tool itself puts into a MIF is none. A target that is missing or no regular
/// file has none.
/// @throws tool_error (wrong usage) with the number of comments, which --force gives up.
void require_no_lost_comments(const std::string& target, std::string_view written);

} // namespace kvrmem

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// What generated_text() makes: "man" (a manual page for man(7)), and completions by the names of their
/// shells.
[[nodiscard]] std::vector<std::string_view> generated_kinds();

/// What other programs want to know of the tool's commands and options, made from the tables that the
/// parser uses.
/// @throws tool_error (wrong usage) for a @p kind that is not one of generated_kinds().
[[nodiscard]] std::string generated_text(std::string_view kind);

} // namespace kvrmem

#pragma once

#include <string>
#include <string_view>

namespace kvrmem {

/// What other programs want to know of the tool's commands and options, made from the tables that the
/// parser uses: "man" (a manual page for man(7)), or the completions "bash", "zsh" and "fish".
/// @throws tool_error (wrong usage) for any other @p kind.
[[nodiscard]] std::string generated_text(std::string_view kind);

} // namespace kvrmem

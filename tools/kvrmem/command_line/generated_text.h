#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// What generated_text() makes: "man" (a manual page for man(7)), and completions by the names of their
/// shells.
[[nodiscard]] std::vector<std::string_view> generated_kinds();

/// What other programs want to know of the tool's commands and options, made from the tables that the
/// parser uses.
/// @param words a kind, or "man" and the name of a command, for the page of that command
/// @throws tool_error (wrong usage) for other words
[[nodiscard]] std::string generated_text(std::span<const std::string> words);

} // namespace kvrmem

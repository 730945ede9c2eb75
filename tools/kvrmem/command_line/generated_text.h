#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// Returns the kinds of generated_text(): "man" (a manual page for man(7)), and the shells with completions.
[[nodiscard]] std::vector<std::string_view> generated_kinds();

/// Returns a text about the commands and options for another program, made from the tables of the parser.
/// @param words a kind, or "man" and the name of a command for its page
/// @throws tool_error (wrong usage) for other words
[[nodiscard]] std::string generated_text(std::span<const std::string> words);

} // namespace kvrmem

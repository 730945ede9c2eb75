#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <vector>

namespace kvrmem {

// What the library's formats are called in help, messages and completions.

/// The words that --from and --to take first, separated by blanks: "mif hex rif".
[[nodiscard]] std::string format_choices();

/// All words that they take, for a message: "mif, hex (or ihex) or rif".
[[nodiscard]] std::string format_words();

/// ".mif, .hex, .ihex and .rif", with @p last (" and ") before the last one.
[[nodiscard]] std::string format_extensions(const char* last);

/// The titles of the formats for which @p holds is true, "Intel HEX and RIF".
[[nodiscard]] std::string format_titles(bool (*holds)(const kvrimage::format&));

/// The words that --for takes: the names of consumers, and "none".
[[nodiscard]] std::vector<std::string> consumer_choices();

/// @p text of a help with the formats in the place of "{extensions}" and "{titles}".
[[nodiscard]] std::string with_format_names(std::string text);

} // namespace kvrmem

#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

// What the library's formats are called in help, messages and completions.

/// The names of all formats: "mif", "hex", "rif".
[[nodiscard]] std::vector<std::string_view> format_ids();

/// Those of the formats that can be read, and written, separated by blanks: "mif hex rif".
///@{
[[nodiscard]] std::string readable_formats();
[[nodiscard]] std::string writable_formats();
///@}

/// The titles of the formats for which @p holds is true, "Intel HEX and RIF".
[[nodiscard]] std::string format_titles(bool (*holds)(const kvrimage::format&));

/// The words that --for takes: the names of consumers, and "none".
[[nodiscard]] std::vector<std::string> consumer_choices();

/// @p text of a help with the titles of all formats in the place of "{titles}", and the names of all
/// checksums in that of "{checksums}", in lines of at most 80 characters.
[[nodiscard]] std::string with_names(std::string text);

} // namespace kvrmem

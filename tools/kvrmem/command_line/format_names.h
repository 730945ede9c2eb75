#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

// Names of the library's formats for help, messages and completions.

/// Returns the identifiers of all formats: "mif", "hex", "rif".
[[nodiscard]] std::vector<std::string_view> format_ids();

/// Return the identifiers of the readable or writable formats, separated by blanks: "mif hex rif".
///@{
[[nodiscard]] std::string readable_formats();
[[nodiscard]] std::string writable_formats();
///@}

/// Returns the titles of the formats that satisfy @p holds: "Intel HEX and RIF".
[[nodiscard]] std::string format_titles(bool (*holds)(const kvrimage::format&));

/// Returns the values of --for: the names of consumers, and "none".
[[nodiscard]] std::vector<std::string> consumer_choices();

/// Replaces "{titles}" in the help text @p text by the titles of all formats and "{checksums}" by the names
/// of all checksums, and wraps lines at 80 characters.
[[nodiscard]] std::string with_names(std::string text);

} // namespace kvrmem

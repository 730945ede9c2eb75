#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace kvrmem {

/// Keeps the order in which members are added.
using json_value = nlohmann::ordered_json;

/// Converts the name of a file, which may contain any byte except NUL, to a unique text in UTF-8: each byte
/// that is not UTF-8 becomes U+0000 and its two upper-case hexadecimal digits.
[[nodiscard]] std::string json_name(std::string_view path);

/// Returns @p document in one line, with U+FFFD for invalid UTF-8.
[[nodiscard]] std::string json_text(const json_value& document);

/// Prints @p document, indented, with U+FFFD for invalid UTF-8.
void print_json(const json_value& document);

} // namespace kvrmem

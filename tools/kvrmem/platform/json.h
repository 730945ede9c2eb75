#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace kvrmem {

/// Keeps the order in which its members are named.
using json_value = nlohmann::ordered_json;

/// The name of a file, which may hold any byte but NUL: each byte that is no UTF-8 is U+0000 and the byte's
/// two upper-case hexadecimal digits. No other name has that text.
[[nodiscard]] std::string json_name(std::string_view path);

/// @p document in one line, with U+FFFD for what is no UTF-8 in it.
[[nodiscard]] std::string json_text(const json_value& document);

/// Prints @p document, indented, with U+FFFD for what is no UTF-8 in it.
void print_json(const json_value& document);

} // namespace kvrmem

#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace kvrmem {

/// Keeps the order in which its members are named.
using json_value = nlohmann::ordered_json;

/// @p document in one line, with U+FFFD for what is no UTF-8 in it.
[[nodiscard]] std::string json_text(const json_value& document);

/// Prints @p document, indented, with U+FFFD for what is no UTF-8 in it (names of files can be that).
void print_json(const json_value& document);

} // namespace kvrmem

#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/hex/hex_parser.h"

#include <string_view>

namespace kvrimage {

/// The diagnostic of a record at fault, with the repair where that is certain.
/// @param line of which `fault` is not none
[[nodiscard]] diagnostic describe_hex_fault(std::string_view contents, const hex_line& line);

/// @p text as a last line of @p contents, with the line end that the others have.
[[nodiscard]] std::string as_last_line(std::string_view contents, std::string_view text);

/// "1 byte", "2 bytes".
[[nodiscard]] std::string count_of(std::uint64_t number, std::string_view noun);

} // namespace kvrimage

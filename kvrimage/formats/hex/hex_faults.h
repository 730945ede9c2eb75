#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/hex/hex_parser.h"

#include <string_view>

namespace kvrimage {

/// The diagnostic of a record at fault, with the repair where that is certain.
/// @param line of which `fault` is not none
[[nodiscard]] diagnostic describe_hex_fault(std::string_view contents, const hex_line& line);

} // namespace kvrimage

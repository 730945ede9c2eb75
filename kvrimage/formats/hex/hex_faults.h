#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/hex/hex_parser.h"

#include <string_view>

namespace kvrimage {

/// Describes a faulty record, with the repair if that is certain.
/// @param line its `fault` must not be none
[[nodiscard]] diagnostic describe_hex_fault(std::string_view contents, const hex_line& line);

} // namespace kvrimage

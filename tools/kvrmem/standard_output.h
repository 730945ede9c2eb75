#pragma once

#include <string_view>

namespace kvrmem {

/// Writes @p text to standard output, at once.
/// @throws tool_error (input/output) when it cannot be written.
void print(std::string_view text);

} // namespace kvrmem

#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <cstdint>

namespace kvrmem {

/// Rejects options that have no effect in this run. Rules that depend on formats apply if names and options
/// determine the formats.
/// @throws tool_error (wrong usage) with the option and the reason
void refuse_idle_options(const command& which, const arguments& given);

/// Applies the rules that depend on the file. @p width is the word width in bits.
void refuse_idle_options(const command& which, const arguments& given, std::uint32_t width);

} // namespace kvrmem

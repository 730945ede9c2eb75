#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <cstdint>

namespace kvrmem {

/// Refuses options that change nothing in this run, of which the user expects something. What depends on the
/// formats is validated as far as names and options determine these.
/// @throws tool_error (wrong usage) with the option and the reason.
void refuse_idle_options(const command& which, const arguments& given);

/// The same for what is known only when the file is read: @p width, the bits of its words.
void refuse_idle_options(const command& which, const arguments& given, std::uint32_t width);

} // namespace kvrmem

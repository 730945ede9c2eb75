#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <string>

namespace kvrmem {

/// The help for the tool: examples first, then the commands.
[[nodiscard]] std::string overview();

/// The help for one command: examples first, then usage, what it does, and options.
[[nodiscard]] std::string help_for(const command& which);

/// What a column of option names shows: "-o, --output FILE".
[[nodiscard]] std::string title_of(const option_entry& entry);

} // namespace kvrmem

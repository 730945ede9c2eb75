#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <string>

namespace kvrmem {

/// Returns the help of the tool: examples, then the commands.
[[nodiscard]] std::string overview();

/// Returns the help of a command: examples, usage, description, options.
[[nodiscard]] std::string help_for(const command& which);

/// Returns the title of an option in a table: "-o, --output FILE".
[[nodiscard]] std::string title_of(const option_entry& entry);

} // namespace kvrmem

#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <string>

namespace kvrmem {

// Pages for man(7), with the date of the release.

/// Returns kvrmem(1), which refers to the pages of the commands.
[[nodiscard]] std::string manual_page();

/// Returns the page of a command, such as kvrmem-convert(1).
[[nodiscard]] std::string manual_page(const command& which);

} // namespace kvrmem

#pragma once

#include "tools/kvrmem/command_line/command_line.h"

namespace kvrmem {

/// What "check --fix" does: writes the repaired file, and tells on the standard error what was changed and
/// what is left. The standard output is left to the file, which may be "-".
/// @throws tool_error when the file cannot be read, or the repaired one not be written.
[[nodiscard]] exit_code repair_file(const arguments& given);

} // namespace kvrmem

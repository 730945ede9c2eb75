#pragma once

#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/command_line/command_line.h"

namespace kvrmem {

/// Returns the options in @p given for checking a file that is read with @p reading.
[[nodiscard]] kvrimage::check_options check_options_for(const arguments& given,
                                                        const kvrimage::read_options& reading);

/// Implements "check --fix": writes the repaired file and reports on standard error what was changed and what
/// is left. The file may be written to standard output ("-").
/// @throws tool_error, kvrimage::file_error if the file cannot be read, or the repaired one cannot be written
[[nodiscard]] exit_code repair_file(const arguments& given);

} // namespace kvrmem

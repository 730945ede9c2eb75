#pragma once

namespace kvrmem {

/// Runs the command line, which begins with the program's name, and reports errors on standard error.
/// @return the exit code
[[nodiscard]] int run_program(int count, char** words);

} // namespace kvrmem

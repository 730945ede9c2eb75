#pragma once

namespace kvrmem {

/// Does what the command line says, the program's name in front of it, and reports on standard error why it
/// could not.
/// @return the exit code for the shell.
[[nodiscard]] int run_program(int count, char** words);

} // namespace kvrmem

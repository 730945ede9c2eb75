#pragma once

#include <string>

namespace kvrmem {

/// A script for zsh that completes command lines of the tool: as a file _kvrmem in a folder of $fpath, or
/// when it is sourced after compinit.
[[nodiscard]] std::string zsh_completion();

} // namespace kvrmem

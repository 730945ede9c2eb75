#pragma once

#include <string>

namespace kvrmem {

/// Returns a completion script for zsh: to be used as file _kvrmem in a folder of $fpath, or sourced after
/// compinit.
[[nodiscard]] std::string zsh_completion();

} // namespace kvrmem

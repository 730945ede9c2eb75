#pragma once

#include <string>

namespace kvrmem {

/// Returns a completion script for bash 4.3 or later, to be sourced.
[[nodiscard]] std::string bash_completion();

} // namespace kvrmem

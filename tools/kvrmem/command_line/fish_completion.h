#pragma once

#include <string>

namespace kvrmem {

/// Returns a completion script for fish, to be sourced.
[[nodiscard]] std::string fish_completion();

} // namespace kvrmem

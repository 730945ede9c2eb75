#pragma once

#include <string>

namespace kvrmem {

/// A script for fish that completes command lines of the tool once it is sourced.
[[nodiscard]] std::string fish_completion();

} // namespace kvrmem

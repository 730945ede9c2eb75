#pragma once

#include <string>

namespace kvrmem {

/// A script for bash 4.3 or later that completes command lines of the tool once it is sourced.
[[nodiscard]] std::string bash_completion();

} // namespace kvrmem

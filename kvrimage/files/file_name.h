#pragma once

#include <string>

namespace kvrimage {

/// The name of the input @p path in messages, safe to show on a terminal; "standard input" for "-".
[[nodiscard]] std::string title_of_input(const std::string& path);

/// The same for an output; "standard output" for "-".
[[nodiscard]] std::string title_of_output(const std::string& path);

} // namespace kvrimage

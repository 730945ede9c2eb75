#pragma once

#include <string>

namespace kvrimage {

/// How messages name what is read from @p path: "standard input" for "-", and nothing that a terminal may not
/// show.
[[nodiscard]] std::string title_of_input(const std::string& path);

/// The same for what is written: "standard output" for "-".
[[nodiscard]] std::string title_of_output(const std::string& path);

} // namespace kvrimage

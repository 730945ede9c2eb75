#pragma once

#include <string_view>

namespace kvr_fuzz {

// What is fuzzed of the tool.

/// The first byte chooses the format, "0" the first of the registry, the second what the person says of the
/// file, which may be choices of the format on the first line; the rest is the file.
void try_check(std::string_view input);
/// Each line is a word of a command line, behind the program's name.
void try_arguments(std::string_view input);

} // namespace kvr_fuzz

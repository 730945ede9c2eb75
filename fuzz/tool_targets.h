#pragma once

#include <string_view>

namespace kvr_fuzz {

// What is fuzzed of the tool.

/// The first byte chooses the format, the second what the person says of the file; the rest is the file.
void try_check(std::string_view input);
/// Each line is a word of a command line, behind the program's name.
void try_arguments(std::string_view input);

} // namespace kvr_fuzz

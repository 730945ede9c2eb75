#pragma once

#include <string_view>

namespace kvr_fuzz {

// The fuzz targets of the tool.

/// The first byte chooses the format, "0" the first of the registry, the second what a user says of the
/// file, which may be choices of the format on the first line; the rest is the file.
void try_check(std::string_view input);
/// Each line is a word of a command line, after the program's name.
void try_arguments(std::string_view input);
/// Each line is a message to the language server; the text after "=" is put into the stream as it is.
void try_language_server(std::string_view input);

} // namespace kvr_fuzz

#pragma once

#include <string>

namespace kvr {

/// @p path up to its last "/" or backslash, that one included; the whole path if that is its first character.
/// @throws std::out_of_range if there is none.
std::string directory_of_path(const std::string& path);

/// The place of the data directory @p relative, given from the binary directory, for an executable in
/// @p executable_directory (with its separator). A path that does not exist when there is none.
std::string find_data_path(const std::string& executable_directory, const std::string& relative);

} // namespace kvr

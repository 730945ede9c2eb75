#pragma once

#include <string>

namespace kvr {

/// Returns @p path up to and including its last "/" or backslash, or the whole path if that is its first
/// character.
/// @throws std::out_of_range if there is none.
std::string directory_of_path(const std::string& path);

/// Returns the path of the data directory @p relative, given relative to the binary directory, for an
/// executable in @p executable_directory (with its separator). If there is none, the result does not exist.
std::string find_data_path(const std::string& executable_directory, const std::string& relative);

} // namespace kvr

#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// Directories of the installation. Every result that is not empty ends in "/" or "\", so that file names are
/// appended to it directly.

/// The directory of the running executable (not of this library). An executable right below the root
/// directory gives its own path instead; callers rely on it.
/// @throws std::out_of_range if the executable's path holds no separator or is not known.
KVR_API std::string kvr_get_module_path();

/// The tool's binary directory: the value of VELKORA_BINDIR if that path exists, else "bin64" below the value
/// of VELKORA_ROOTDIR if that one exists ("bin64" itself is not checked), else "".
KVR_API std::string kvr_get_velkora_module_path();

// The data directories are siblings of the binary directory. The result is the first of these that exists:
// a sibling of the executable's directory; one of kvr_get_velkora_module_path(), which without the variables
// is the working directory; relative to the text before "jre/bin" in the executable's directory. If none
// exists, the result is the first. All three raise the error of kvr_get_module_path().

/// "../libraries/plexfunctions/xml_info/", from the binary directory.
KVR_API std::string kvr_get_library_module_path();

/// "../libraries/plexfunctions/", from the binary directory.
KVR_API std::string kvr_get_plexfunctions_library_path();

/// "../common/misc/", from the binary directory.
KVR_API std::string kvr_get_common_misc_path();

#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// Directories of the installation. Nonempty results end in "/" or "\", so that file names can be appended.

/// Returns the directory of the running executable (not of this library). For an executable directly below
/// the root directory it returns the executable's path; callers rely on it.
/// @throws std::out_of_range if the executable's path has no separator or is unknown.
KVR_API std::string kvr_get_module_path();

/// Returns the tool's binary directory: the value of VELKORA_BINDIR if that path exists, else "bin64" below
/// the value of VELKORA_ROOTDIR if that exists ("bin64" itself is not checked), else "".
KVR_API std::string kvr_get_velkora_module_path();

// The data directories are siblings of the binary directory. The functions return the first of these that
// exists: a sibling of the executable's directory; one of kvr_get_velkora_module_path(), which without the
// variables is the working directory; one relative to the text before "jre/bin" in the executable's
// directory. If none exists, they return the first. All three throw the exceptions of kvr_get_module_path().

/// Returns "../libraries/plexfunctions/xml_info/", relative to the binary directory.
KVR_API std::string kvr_get_library_module_path();

/// Returns "../libraries/plexfunctions/", relative to the binary directory.
KVR_API std::string kvr_get_plexfunctions_library_path();

/// Returns "../common/misc/", relative to the binary directory.
KVR_API std::string kvr_get_common_misc_path();

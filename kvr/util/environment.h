#pragma once

/// @file
/// Environment variables and the process.

#include "kvr/export.h"

#include <string>

/// The value of an environment variable; "" when it is not set, and for a null name.
KVR_API std::string kvr_get_env_var_value(const char* name);

/// True when @p wanted is an element of @p list, whose elements are separated by ";". ASCII letter case does
/// not count. An empty element ends the search ("a;;b" does not hold "b"), and so does the end of the list:
/// either one is found itself when @p wanted is empty. Callers rely on it. An empty list holds nothing.
KVR_API bool kvr_env_var_has_value(std::string list, std::string wanted);

/// The process id of the running process.
KVR_API int kvr_get_process_id();

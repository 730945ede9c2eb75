#pragma once

/// @file
/// Environment variables and the process.

#include "kvr/export.h"

#include <string>

/// Returns the value of an environment variable; "" if it is not set, and for a null name.
KVR_API std::string kvr_get_env_var_value(const char* name);

/// Returns whether @p wanted is an element of @p list, whose elements are separated by ";". ASCII letter case
/// is ignored. The search ends at an empty element ("a;;b" does not contain "b") and at the end of the list;
/// either one matches an empty @p wanted. Callers rely on it. An empty list has no elements.
KVR_API bool kvr_env_var_has_value(std::string list, std::string wanted);

/// Returns the id of the running process.
KVR_API int kvr_get_process_id();

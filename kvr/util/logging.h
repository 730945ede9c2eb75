#pragma once

/// @file
/// Log files.

#include "kvr/export.h"

/// Appends the formatted arguments to the file at @p path, which each call opens and closes. Neither a time
/// nor a newline is added. If the file cannot be opened, or for a null path or format, nothing is written or
/// reported.
[[gnu::format(printf, 2, 3)]] KVR_API void kvr_logprintf(const char* path, const char* format, ...);

/// Same as kvr_logprintf(), but empties the file first.
[[gnu::format(printf, 2, 3)]] KVR_API void kvr_logprintf_ovrw(const char* path, const char* format, ...);

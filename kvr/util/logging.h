#pragma once

/// @file
/// Log files.

#include "kvr/export.h"

/// Appends the formatted arguments to the file at @p path, which is opened and closed by each call. Nothing
/// is added to them, neither a time nor a newline. Nothing is written, and nothing reported, when the file
/// cannot be opened and for a null path or format.
[[gnu::format(printf, 2, 3)]] KVR_API void kvr_logprintf(const char* path, const char* format, ...);

/// kvr_logprintf() into a file that is emptied first.
[[gnu::format(printf, 2, 3)]] KVR_API void kvr_logprintf_ovrw(const char* path, const char* format, ...);

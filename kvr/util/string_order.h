#pragma once

/// @file
/// Order of texts without regard to letter case.

#include "kvr/export.h"

#include <map>
#include <string>

/// Less-than that ignores ASCII letter case, whatever the locale: bytes compare as unsigned numbers after
/// "A" to "Z" are folded to "a" to "z", and a proper prefix is less. A text ends at its first NUL.
struct LESS_C_STRING {
    /// True when @p left comes before @p right.
    KVR_API bool operator()(const std::string& left, const std::string& right) const;
};

/// Keys that differ in letter case only are one key, which keeps the spelling that came first.
using KVR_STRING_MAP = std::map<std::string, std::string, LESS_C_STRING>;

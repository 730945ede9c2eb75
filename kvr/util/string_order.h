#pragma once

/// @file
/// Order of texts without regard to letter case.

#include "kvr/export.h"

#include <map>
#include <string>

/// Less-than that ignores ASCII letter case, independent of the locale: "A" to "Z" are folded to "a" to "z",
/// then bytes compare as unsigned numbers. A proper prefix is less. A text ends at its first NUL.
struct LESS_C_STRING {
    /// Returns whether @p left precedes @p right.
    KVR_API bool operator()(const std::string& left, const std::string& right) const;
};

/// Keys that differ only in letter case are equal; the first spelling is kept.
using KVR_STRING_MAP = std::map<std::string, std::string, LESS_C_STRING>;

#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// A wizard marks a design file that it wrote in the first lines of the file:
///
///     -- plexfunction wizard: %RAM: 2-PORT% v7.2%
///     -- generation: deferred
///
/// Words are separated by exactly one blank each; ASCII letter case does not count.

/// True when the third word of the file's first line is "wizard:".
/// @param wizard_name    the text between the "%" after it; "" in any other case.
/// @param wizard_version "7.2" for a last word of the form "v7.2%", also where that word is part of the
///                       name; "" in any other case.
/// @return false also for a null path and for a file of which that line cannot be read to its end.
KVR_API bool is_wizard_generated_file(const char* path, std::string& wizard_name,
                                      std::string& wizard_version);

/// True when the second or the third word of the file's first line is "wizard:" and the second line goes on
/// with "generation:" and "deferred" as its second and third words. False also for a null path and for a
/// file of which these lines cannot be read to their ends.
KVR_API bool is_wizard_deferred_generation_file(const char* path);

/// @p name as the name of a generated module or file. A run of separators (blank, backslash, and any of
/// `[ ( ~ $ | : . _ - @`) becomes one "_", or nothing at the very start; "]" and ")" are dropped, everything
/// else is kept. A first character that is no ASCII letter is lost; unless it was "|", "sub_" takes its
/// place. Callers rely on it.
KVR_API std::string convert_name_to_kvr_form(const std::string& name);

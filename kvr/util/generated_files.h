#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// A wizard marks a design file that it wrote in the first lines of the file:
///
///     -- plexfunction wizard: %RAM: 2-PORT% v7.2%
///     -- generation: deferred
///
/// Words are separated by exactly one blank; ASCII letter case is ignored.

/// Returns whether the third word of the file's first line is "wizard:".
/// @param wizard_name    set to the text between the "%" after it; "" in any other case.
/// @param wizard_version set to "7.2" for a last word of the form "v7.2%", even if that word is part of the
///                       name; "" in any other case.
/// @return also false for a null path and for a file whose first line cannot be read to its end.
KVR_API bool is_wizard_generated_file(const char* path, std::string& wizard_name,
                                      std::string& wizard_version);

/// Returns whether the second or third word of the file's first line is "wizard:" and the second and third
/// words of the second line are "generation:" and "deferred". Also false for a null path and for a file whose
/// two lines cannot be read to their ends.
KVR_API bool is_wizard_deferred_generation_file(const char* path);

/// Converts @p name to the name of a generated module or file. A run of separators (blank, backslash, and any
/// of `[ ( ~ $ | : . _ - @`) becomes one "_", or nothing at the start; "]" and ")" are dropped, all other
/// characters are kept. A first character that is not an ASCII letter is dropped and, unless it was "|",
/// replaced by "sub_". Callers rely on it.
KVR_API std::string convert_name_to_kvr_form(const std::string& name);

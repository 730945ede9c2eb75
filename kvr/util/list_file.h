#pragma once

/// @file
/// List files, which assign libraries to modules.

#include "kvr/export.h"
#include "kvr/util/string_order.h"

#include <string>

/// Reads the list file @p list_file_name in @p directory. Each line names a module and the library that
/// implements it, `name=library` or `name=library;extra`, without blanks and tabs. Empty lines, lines that
/// begin with a CR, and comments, which begin with `//`, are ignored. Lines are not trimmed.
///
/// A module counts if its design file, `name.tdf`, is in the same directory:
/// @param library_map     [key] gets the path of its library, or the name in the line if that file does not
///                        exist. ".dll" is appended unless the path's text after its first "." is ".dll"
///                        ("ram.dll" becomes "ram.dll.dll", "ram..dll" stays); callers rely on it.
/// @param origin_map      [path of the design file] gets the path of the list file.
/// @param extra_map       [key] gets the extra text, unless it is empty.
/// @param key_by_tdf_path the key is the path of the design file instead of the module's name.
///
/// Entries with an equal key are overwritten, others stay.
/// @return false if the file cannot be opened or read to its end, and for a line of any other form or of 100
///         characters or more. Such a line ends the read; the entries of earlier lines stay in the maps.
/// @throws std::out_of_range for an empty @p directory.
KVR_API bool kvr_process_lst_file(const std::string& directory, const std::string& list_file_name,
                                  KVR_STRING_MAP& library_map, KVR_STRING_MAP& origin_map,
                                  KVR_STRING_MAP& extra_map, bool key_by_tdf_path);

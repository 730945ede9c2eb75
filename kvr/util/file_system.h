#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// Failures are reported by the result only. A null path does not exist; a path ends at its first NUL. Path
/// bytes are passed to the operating system unchanged: any encoding on POSIX systems, the process's active
/// code page on Windows.

/// Returns whether a file or directory exists. For a symbolic link its target counts.
KVR_API bool kvr_file_exists(const std::string& path);

/// Same as kvr_file_exists().
KVR_API bool kvr_check_if_file_or_dir_exists(const std::string& path);

/// Returns the working directory; "" if its path has 500 characters or more.
KVR_API std::string kvr_get_current_directory();

/// Appends "/" unless the last character is "/" or a backslash.
/// @throws std::out_of_range for an empty text, which stays unchanged.
KVR_API void add_trailing_slashes_to_directory_name(std::string& directory);

/// Creates one directory. Returns 0, or -1 on failure.
KVR_API int kvr_mkdir(const char* path);

/// Removes an empty directory. Returns 0, or -1 on failure.
KVR_API int kvr_rmdir(const char* path);

/// Removes a file, or a symbolic link itself. Returns false on failure and for a directory.
KVR_API bool kvr_remove_file(const char* path);

/// Removes the files that match @p pattern: a directory, a separator and a wildcard in which "*" is any text,
/// "?" any character and "*.*" every name ("dir/*.*"). On POSIX systems letter case counts.
///
/// The directory is the text before the last "/", or before the last backslash if there is no "/". A pattern
/// with neither finds its files in the working directory but removes them in a directory named like the
/// pattern, which fails if there is none; callers rely on it.
///
/// Symbolic links are removed, never followed; "." and ".." are never touched. The depth of a tree is limited
/// by the files that the process may open.
///
/// @param recursive removes subdirectories with their contents, unless they have an attribute such as
///                  read-only. Those, and without this flag all subdirectories, are treated as files, whose
///                  removal fails.
/// @return true if everything found was removed, and if nothing was found, also because the directory is
///         missing or cannot be listed. False if an entry stays for any reason: its attributes cannot be
///         read, it cannot be removed, or the directory can be listed but not searched. The first failure
///         ends the call: earlier entries are removed, later ones stay.
/// @throws std::out_of_range for an empty pattern, and if its only separator is its first character.
KVR_API bool kvr_remove_all_files(const char* pattern, bool recursive);

/// Copies the bytes of a file and replaces the contents of @p destination. The destination stays unchanged if
/// the source cannot be opened. A file copied onto itself becomes empty.
/// @return false if a file cannot be opened, if the source is a directory, and for an error detected while
///         bytes are read or written; bytes still buffered then are written later, without a check.
KVR_API bool kvr_file_copy(const char* source, const char* destination);

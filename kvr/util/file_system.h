#pragma once

#include "kvr/export.h"

#include <string>

/// @file
/// Failures are reported by the result alone. A null path is one that does not exist; a path ends at its
/// first NUL. The operating system gets its bytes as they are: any encoding on POSIX systems, the process's
/// active code page on Windows.

/// True for a file or a directory that exists; for a symbolic link it is the link's target that counts.
KVR_API bool kvr_file_exists(const std::string& path);

/// kvr_file_exists() under a second name.
KVR_API bool kvr_check_if_file_or_dir_exists(const std::string& path);

/// The working directory; "" when its path has 500 characters or more.
KVR_API std::string kvr_get_current_directory();

/// Appends "/" unless the last character is "/" or a backslash already.
/// @throws std::out_of_range for an empty text, which stays as it is.
KVR_API void add_trailing_slashes_to_directory_name(std::string& directory);

/// Makes one directory. 0, or -1 when it failed.
KVR_API int kvr_mkdir(const char* path);

/// Removes an empty directory. 0, or -1 when it failed.
KVR_API int kvr_rmdir(const char* path);

/// Removes a file, or a symbolic link itself. False when it failed, and for a directory.
KVR_API bool kvr_remove_file(const char* path);

/// Removes the files that @p pattern names: a directory, a separator and a wildcard in which "*" is any
/// text, "?" any character and "*.*" every name ("dir/*.*"). On POSIX systems letter case counts.
///
/// The directory is the text before the last "/", or before the last backslash if there is no "/". A
/// pattern with neither finds its files in the working directory but removes them in a directory of the
/// pattern's own name, which fails where there is none; callers rely on it.
///
/// Symbolic links found there are removed, never followed; "." and ".." are never touched. A tree may be as
/// deep as the process may have files open.
///
/// @param recursive subdirectories are removed with their contents, unless they have an attribute such as
///                  being read-only. Those, and all subdirectories without this flag, are taken for files,
///                  whose removal fails.
/// @return true when all that was found was removed, and when nothing was found, also because there is no
///         such directory or it may not be listed. False when something that it lists stays, for whatever
///         reason: its attributes cannot be read, it cannot be removed, or the directory may be listed but
///         not searched. The first failure ends the call: what follows stays, what came before is gone.
/// @throws std::out_of_range for an empty pattern, and if its only separator is its first character.
KVR_API bool kvr_remove_all_files(const char* pattern, bool recursive);

/// Copies the bytes of a file, replacing what @p destination holds. The destination is not touched when the
/// source cannot be opened. A file copied onto itself is left empty.
/// @return false if a file cannot be opened, if the source is a directory, and for an error that shows while
///         bytes are read or written; what is still buffered then is written later, without a check.
KVR_API bool kvr_file_copy(const char* source, const char* destination);

#pragma once

#include <string>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace kvr_test {

#if defined(_WIN32)

// Windows has no such permissions: they are always 0.
using file_permissions = unsigned;

inline file_permissions permissions_on_disk(const std::string& /*path*/) {
    return 0;
}
inline file_permissions permissions_of_new_file() {
    return 0;
}
inline file_permissions with_permissions(const std::string& /*path*/, file_permissions /*wanted*/) {
    return 0;
}

#else

using file_permissions = mode_t;

/// The permissions of the file @p path; 0 if it does not exist.
inline file_permissions permissions_on_disk(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

inline file_permissions permissions_of_new_file() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666U & ~mask;
}

/// Sets the permissions of the file @p path to @p wanted and returns the resulting ones; 0 if that failed.
inline file_permissions with_permissions(const std::string& path, file_permissions wanted) {
    return chmod(path.c_str(), wanted) == 0 ? wanted : 0;
}

#endif

} // namespace kvr_test

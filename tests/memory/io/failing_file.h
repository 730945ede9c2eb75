#pragma once

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string>
#include <sys/types.h>

#if defined(__GLIBC__)

namespace kvr {

/// A file in memory. Its reads fail from `error_at` on after it has been rewound `rewinds` times. Its
/// contents may change after a rewind.
struct failing_file {
    std::string content;
    std::size_t error_at = std::numeric_limits<std::size_t>::max();
    int rewinds = 0;
    std::string content_after_rewind = {}; ///< "" if they stay the same
    std::size_t position = 0;

    /// Opens a stream on the file; the caller closes it before the file is destroyed.
    std::FILE* open() { return fopencookie(this, "rb", {read, nullptr, seek, nullptr}); }

private:
    static ssize_t read(void* cookie, char* buffer, std::size_t size) {
        auto& file = *static_cast<failing_file*>(cookie);
        if (file.rewinds <= 0 && file.position >= file.error_at) {
            errno = EIO;
            return -1;
        }
        const std::size_t count = std::min(size, file.content.size() - file.position);
        std::copy_n(file.content.data() + file.position, count, buffer);
        file.position += count;
        return static_cast<ssize_t>(count);
    }
    static int seek(void* cookie, off64_t* offset, int whence) {
        auto& file = *static_cast<failing_file*>(cookie);
        if (whence == SEEK_SET) {
            file.position = static_cast<std::size_t>(*offset);
            --file.rewinds;
            if (!file.content_after_rewind.empty()) {
                file.content = file.content_after_rewind;
            }
        }
        *offset = static_cast<off64_t>(file.position);
        return 0;
    }
};

} // namespace kvr

#endif

#pragma once

#include <cstddef>
#include <cstring>

namespace kvr {

/// Bytes after the end of a text that copy_padded() may read and write.
inline constexpr std::size_t copy_padding = 16;

/// Copies @p length characters in steps of `copy_padding` bytes. Up to 15 bytes after the end are also read
/// and written; both buffers must have them. For short texts this is much faster than an exact copy.
inline void copy_padded(const char* from, std::size_t length, char* to) noexcept {
    for (std::size_t done = 0; done < length; done += copy_padding) {
        std::memcpy(to + done, from + done, copy_padding);
    }
}

} // namespace kvr

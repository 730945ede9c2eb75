#pragma once

#include <cstddef>
#include <cstring>

namespace kvr {

/// Bytes behind the end of a text that copy_padded() may read and write.
inline constexpr std::size_t copy_padding = 16;

/// Copies @p length characters in whole steps of `copy_padding` bytes: up to 15 bytes behind the end are
/// read and written as well, and both places must have them. For short texts much faster than a copy that
/// has to end exactly.
inline void copy_padded(const char* from, std::size_t length, char* to) noexcept {
    for (std::size_t done = 0; done < length; done += copy_padding) {
        std::memcpy(to + done, from + done, copy_padding);
    }
}

} // namespace kvr

#pragma once

#include <cstddef>

namespace kvr_test {

inline constexpr std::size_t kibibyte = 1024;
inline constexpr std::size_t mebibyte = 1024 * kibibyte;

/// @p bytes, or more in the debug mode of the standard library, in which containers are larger.
constexpr std::size_t with_debug_mode(std::size_t bytes) {
#ifdef _GLIBCXX_DEBUG
    return bytes * 5 / 4;
#else
    return bytes;
#endif
}

} // namespace kvr_test

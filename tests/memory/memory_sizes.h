#pragma once

#include <cstddef>

namespace kvr_test {

inline constexpr std::size_t kibibyte = 1024;
inline constexpr std::size_t mebibyte = 1024 * kibibyte;

/// The size of @p bytes where containers are larger: in the debug mode of the standard library.
constexpr std::size_t with_debug_mode(std::size_t bytes) {
#ifdef _GLIBCXX_DEBUG
    return bytes * 5 / 4;
#else
    return bytes;
#endif
}

} // namespace kvr_test

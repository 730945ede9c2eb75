#pragma once

#include <cstddef>

namespace kvr_test {

inline constexpr std::size_t kibibyte = 1024;
inline constexpr std::size_t mebibyte = 1024 * kibibyte;

} // namespace kvr_test

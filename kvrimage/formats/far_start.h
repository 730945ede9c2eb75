#pragma once

#include <cstdint>

namespace kvrimage {

/// Nobody means a memory that begins so far below the lowest address of a file, in its own unit.
inline constexpr std::uint64_t least_far_start = std::uint64_t{1} << 24U;

} // namespace kvrimage

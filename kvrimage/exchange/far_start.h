#pragma once

#include <cstdint>

namespace kvrimage {

/// Distance from the base to a file's lowest address, in its unit, that suggests a missing base.
inline constexpr std::uint64_t least_far_start = std::uint64_t{1} << 24U;

} // namespace kvrimage

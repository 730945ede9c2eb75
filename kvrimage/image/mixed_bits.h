#pragma once

#include <cstdint>

namespace kvrimage {

/// Mixes the bits of @p value (the finalizer of splitmix64). Different values have different results.
[[nodiscard]] constexpr std::uint64_t mixed_bits(std::uint64_t value) noexcept {
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31U);
}

} // namespace kvrimage

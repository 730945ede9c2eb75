#pragma once

#include <cstdint>

namespace kvrimage {

/// How a number that cannot be represented exactly is rounded.
enum class rounding : std::uint8_t {
    nearest, ///< to the nearest value; ties away from 0
    even,    ///< to the nearest value; ties to an even last bit
    down     ///< toward negative infinity
};

} // namespace kvrimage

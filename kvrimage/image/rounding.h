#pragma once

#include <cstdint>

namespace kvrimage {

/// Which of the two numbers around one that cannot be held.
enum class rounding : std::uint8_t {
    nearest, ///< the nearer one; of two that are as near the one farther from 0
    even,    ///< the nearer one; of two that are as near the one whose last bit is 0
    down     ///< the lower one
};

} // namespace kvrimage

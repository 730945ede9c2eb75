#pragma once

#include <cstdint>

namespace kvrimage {

/// The addresses from `first` to `last`, both included. A range is never empty.
struct address_range {
    std::uint64_t first = 0; ///< the lowest address
    std::uint64_t last = 0;  ///< the highest address, at least `first`

    /// Compares both addresses.
    friend bool operator==(const address_range&, const address_range&) = default;
};

} // namespace kvrimage

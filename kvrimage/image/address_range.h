#pragma once

#include <cstdint>

namespace kvrimage {

/// Addresses from `first` to `last`, both included; never empty.
struct address_range {
    std::uint64_t first = 0; ///< the lowest address
    std::uint64_t last = 0;  ///< the highest one, at least `first`

    /// The same addresses.
    friend bool operator==(const address_range&, const address_range&) = default;
};

} // namespace kvrimage

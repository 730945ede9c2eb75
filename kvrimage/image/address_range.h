#pragma once

#include <cstdint>

namespace kvrimage {

/// Addresses from `first` to `last`, both included; never empty.
struct address_range {
    std::uint64_t first = 0;
    std::uint64_t last = 0;

    friend bool operator==(const address_range&, const address_range&) = default;
};

} // namespace kvrimage

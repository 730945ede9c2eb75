#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <stdexcept>

namespace kvrmem {

/// @throws std::invalid_argument for a picture of more than @p most_pixels
inline void require_size(std::uint32_t columns, std::uint32_t rows, std::uint64_t most_pixels) {
    if (std::uint64_t{columns} * rows > most_pixels) {
        throw std::invalid_argument(
            fmt::format("the picture has {} x {} pixels; at most {} are read", columns, rows, most_pixels));
    }
}

} // namespace kvrmem

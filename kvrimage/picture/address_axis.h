#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kvrimage {

/// A place on the axis of addresses.
struct address_tick {
    std::uint64_t offset;
    std::string label; ///< the address: hexadecimal

    friend bool operator==(const address_tick&, const address_tick&) = default;
};

/// Labels the offsets of a picture with the addresses of its memory.
class address_axis {
public:
    /// @param base_address of offset 0
    address_axis(const column_grid& columns, std::uint64_t base_address)
        : grid(columns),
          base(base_address) {}

    /// The characters of a label; all have as many.
    [[nodiscard]] std::size_t label_size() const;
    /// Ticks at the addresses that are multiples of the least power of two that is at least @p least_step; at
    /// the first address when none of them is a multiple.
    [[nodiscard]] std::vector<address_tick> ticks(double least_step) const;

private:
    column_grid grid;
    std::uint64_t base;
};

} // namespace kvrimage

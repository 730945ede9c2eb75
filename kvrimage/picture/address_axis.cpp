#include "kvrimage/picture/address_axis.h"

#include <fmt/format.h>

namespace kvrimage {

std::size_t address_axis::label_size() const {
    return fmt::format("0x{:X}", base + grid.last()).size();
}

std::vector<address_tick> address_axis::ticks(double least_step) const {
    std::uint64_t step = 1;
    while (static_cast<double>(step) < least_step) {
        step *= 2;
    }
    const auto tick_at = [this, digits = label_size() - 2](std::uint64_t offset) {
        return address_tick{offset, fmt::format("0x{:0{}X}", base + offset, digits)};
    };
    const std::uint64_t after_multiple = (base + grid.first()) % step;
    std::vector<address_tick> ticks;
    for (std::uint64_t offset = grid.first() + (after_multiple == 0 ? 0 : step - after_multiple);
         offset <= grid.last(); offset += step) {
        ticks.push_back(tick_at(offset));
    }
    if (ticks.empty()) {
        ticks.push_back(tick_at(grid.first()));
    }
    return ticks;
}

} // namespace kvrimage

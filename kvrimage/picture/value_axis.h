#pragma once

#include "kvrimage/picture/value_order.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvrimage {

/// The least and the greatest value, as keys of a value_order.
struct value_bounds {
    std::uint64_t lowest;
    std::uint64_t highest;

    friend bool operator==(const value_bounds&, const value_bounds&) = default;
};

/// Values from the lowest to the highest key, which are never the same.
struct value_axis {
    std::uint64_t lowest;
    std::uint64_t highest;

    /// 0 for the lowest, 1 for the highest, and between them in proportion.
    [[nodiscard]] double position_of(std::uint64_t key) const noexcept;

    /// From where the bars of values grow: from zero, or from the end of the axis that is nearer to it.
    [[nodiscard]] std::uint64_t bar_base(const value_order& order) const noexcept;

    friend bool operator==(const value_axis&, const value_axis&) = default;
};

/// The axis for values within @p bounds. Zero is on it when it is no farther away than the values are from
/// each other, and when all of them are the same.
[[nodiscard]] value_axis axis_for(const value_order& order, const value_bounds& bounds);

/// A place on the axis with a round value.
struct value_tick {
    std::uint64_t key;
    std::string label;

    friend bool operator==(const value_tick&, const value_tick&) = default;
};

/// At most @p most + 1 ticks, from the lowest to the highest: where values are signed integers at the
/// multiples of 1, 2 or 5 times a power of ten, else at those of a power of two. Labels are as of
/// value_order::text_of(); large integers end in a power of ten ("500e6").
/// @param most at least 4
[[nodiscard]] std::vector<value_tick> ticks_of(const value_order& order, const value_axis& axis,
                                               std::uint32_t most);

} // namespace kvrimage

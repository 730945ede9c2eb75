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

/// A range of values from the lowest to the highest key, which always differ.
struct value_axis {
    std::uint64_t lowest;
    std::uint64_t highest;

    /// Returns the position of a key on the axis: 0 for the lowest, 1 for the highest, linear between them.
    [[nodiscard]] double position_of(std::uint64_t key) const noexcept;

    /// Returns the key from which bars grow: zero, or the end of the axis that is closer to zero.
    [[nodiscard]] std::uint64_t bar_base(const value_order& order) const noexcept;

    friend bool operator==(const value_axis&, const value_axis&) = default;
};

/// Returns the axis for values within @p bounds. It includes zero if zero is no farther from the values than
/// they are from each other, and if all values are equal.
[[nodiscard]] value_axis axis_for(const value_order& order, const value_bounds& bounds);

/// A position on the axis with a round value.
struct value_tick {
    std::uint64_t key;
    std::string label;

    friend bool operator==(const value_tick&, const value_tick&) = default;
};

/// Returns at most @p most + 1 ticks, lowest first. Signed integers have ticks at multiples of 1, 2 or 5
/// times a power of ten, other values at multiples of a power of two. Labels are those of
/// value_order::text_of(); large integers end in a power of ten ("500e6").
/// @param most at least 4
[[nodiscard]] std::vector<value_tick> ticks_of(const value_order& order, const value_axis& axis,
                                               std::uint32_t most);

} // namespace kvrimage

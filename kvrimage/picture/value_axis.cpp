#include "kvrimage/picture/value_axis.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

/// The distance between ticks: a digit times 10^exponent, or a power of two.
struct tick_step {
    std::uint64_t size;
    std::uint32_t exponent; ///< exponent of ten; 0 for a power of two
};

/// Returns the smallest round step that @p span contains at most @p most times. @p most is at least 4; no
/// span of 64 bits contains the largest step, 5 * 10^18, more often.
tick_step decimal_step(std::uint64_t span, std::uint32_t most) {
    std::uint64_t power = 1;
    for (std::uint32_t exponent = 0;; ++exponent, power *= 10) {
        for (const std::uint64_t digit : {1U, 2U, 5U}) {
            if (span / (digit * power) <= most) {
                return {digit * power, exponent};
            }
        }
    }
}

tick_step binary_step(std::uint64_t span, std::uint32_t most) {
    std::uint64_t size = 1;
    while (span / size > most) {
        size *= 2;
    }
    return {size, 0};
}

/// Signed integers are round in decimal, hexadecimal numbers and fractions in binary.
tick_step step_for(const value_order& order, std::uint64_t span, std::uint32_t most) {
    if (order.is_signed() && order.fraction_bits() == 0) {
        return decimal_step(span, most);
    }
    return binary_step(span, most);
}

/// Labels of large integers keep only the digits that distinguish them: 500000000 is 500e6.
class tick_labels {
public:
    tick_labels(const value_order& values, const tick_step& apart, std::uint64_t largest) : order(values) {
        constexpr std::uint64_t first_long_value = 10'000'000;
        constexpr std::uint32_t group = 3;
        if (largest >= first_long_value) {
            exponent = apart.exponent / group * group;
        }
        for (std::uint32_t power = 0; power < exponent; ++power) {
            unit *= 10;
        }
    }
    [[nodiscard]] std::string label(std::uint64_t key) const {
        const std::uint64_t zero = order.key_of_zero();
        if (exponent == 0 || key == zero) {
            return order.text_of(key);
        }
        return fmt::format("{}{}e{}", key < zero ? "-" : "", (key < zero ? zero - key : key - zero) / unit,
                           exponent);
    }

private:
    const value_order& order;
    std::uint32_t exponent = 0;
    std::uint64_t unit = 1;
};

/// Returns @p left - @p right, or 0 if that is negative.
std::uint64_t distance_above(std::uint64_t left, std::uint64_t right) {
    return left > right ? left - right : 0;
}

} // namespace

double value_axis::position_of(std::uint64_t key) const noexcept {
    return static_cast<double>(key - lowest) / static_cast<double>(highest - lowest);
}

std::uint64_t value_axis::bar_base(const value_order& order) const noexcept {
    return std::clamp(order.key_of_zero(), lowest, highest);
}

value_axis axis_for(const value_order& order, const value_bounds& bounds) {
    const std::uint64_t zero = order.key_of_zero();
    const std::uint64_t span = bounds.highest - bounds.lowest;
    value_axis axis{bounds.lowest, bounds.highest};
    if (zero < bounds.lowest && (span == 0 || bounds.lowest - zero <= span)) {
        axis.lowest = zero;
    }
    if (zero > bounds.highest && (span == 0 || zero - bounds.highest <= span)) {
        axis.highest = zero;
    }
    if (axis.lowest == axis.highest) { // all values are zero
        axis.highest < order.highest_key() ? ++axis.highest : --axis.lowest;
    }
    return axis;
}

std::vector<value_tick> ticks_of(const value_order& order, const value_axis& axis, std::uint32_t most) {
    const std::uint64_t zero = order.key_of_zero();
    const tick_step step = step_for(order, axis.highest - axis.lowest, most);
    const std::uint64_t below = distance_above(zero, axis.lowest);
    const std::uint64_t above = distance_above(axis.highest, zero);
    const tick_labels labels(order, step, std::max(below, above));
    std::vector<value_tick> ticks;
    const auto add = [&](std::uint64_t key) { ticks.push_back({key, labels.label(key)}); };
    const std::uint64_t least_below = std::max<std::uint64_t>(distance_above(zero, axis.highest), 1);
    for (std::uint64_t count = below / step.size; count > 0 && count * step.size >= least_below; --count) {
        add(zero - count * step.size);
    }
    if (zero > axis.highest) {
        return ticks;
    }
    const std::uint64_t least_above = distance_above(axis.lowest, zero);
    for (std::uint64_t count = least_above / step.size + (least_above % step.size == 0 ? 0 : 1);
         count <= above / step.size; ++count) {
        add(zero + count * step.size);
    }
    return ticks;
}

} // namespace kvrimage

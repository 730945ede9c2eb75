#include "kvrimage/picture/waveform.h"

#include <algorithm>

namespace kvrimage {

namespace {

void widen(std::optional<value_bounds>& bounds, const value_bounds& by) {
    bounds = bounds ? value_bounds{std::min(bounds->lowest, by.lowest), std::max(bounds->highest, by.highest)}
                    : by;
}

} // namespace

void waveform::take(const text_run& run) {
    if (run.text.empty()) {
        return;
    }
    const std::optional<std::uint64_t> key = ordered.key_of(run.text);
    grid.for_each_column(run, [&](std::uint32_t column, std::uint64_t /*words*/) {
        if (key) {
            widen(found[column], {*key, *key});
        } else {
            dont_cares[column] = true;
        }
    });
}

value_axis waveform::axis() const {
    std::optional<value_bounds> all;
    for (const std::optional<value_bounds>& column : found) {
        if (column) {
            widen(all, *column);
        }
    }
    return all ? axis_for(ordered, *all) : value_axis{0, ordered.highest_key()};
}

} // namespace kvrimage

#pragma once

#include "kvrimage/picture/column_grid.h"
#include "kvrimage/picture/value_axis.h"
#include "kvrimage/picture/value_order.h"

#include <optional>
#include <vector>

namespace kvrimage {

/// The range of values in each column; nothing if no word of the column has a value.
class waveform {
public:
    waveform(const column_grid& columns_of_picture, const value_order& values)
        : grid(columns_of_picture),
          ordered(values),
          found(grid.columns()),
          dont_cares(grid.columns()) {}
    void take(const text_run& run);
    [[nodiscard]] const value_order& order() const noexcept { return ordered; }
    [[nodiscard]] const std::vector<std::optional<value_bounds>>& columns() const noexcept { return found; }
    /// True if the column has words, all of them with don't-care bits.
    [[nodiscard]] bool is_dont_care(std::uint32_t column) const {
        return !found[column] && dont_cares[column];
    }
    /// Returns the axis for the values of all columns, or for all possible values if no word has one.
    [[nodiscard]] value_axis axis() const;

private:
    column_grid grid;
    value_order ordered;
    std::vector<std::optional<value_bounds>> found;
    std::vector<bool> dont_cares;
};

} // namespace kvrimage

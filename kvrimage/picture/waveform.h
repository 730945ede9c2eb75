#pragma once

#include "kvrimage/picture/column_grid.h"
#include "kvrimage/picture/value_axis.h"
#include "kvrimage/picture/value_order.h"

#include <optional>
#include <vector>

namespace kvrimage {

/// The values of each column: nothing where it has no word with a value.
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
    /// True where a column has words, and none without don't-care bits.
    [[nodiscard]] bool is_dont_care(std::uint32_t column) const {
        return !found[column] && dont_cares[column];
    }
    /// For the values of all columns; of all values that a word can have when no word has one.
    [[nodiscard]] value_axis axis() const;

private:
    column_grid grid;
    value_order ordered;
    std::vector<std::optional<value_bounds>> found;
    std::vector<bool> dont_cares;
};

} // namespace kvrimage

#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage::svg {

/// A rectangle in pixels.
struct box {
    double left;
    double top;
    double width;
    double height;

    [[nodiscard]] constexpr double right() const noexcept { return left + width; }
    [[nodiscard]] constexpr double bottom() const noexcept { return top + height; }
    [[nodiscard]] constexpr double middle() const noexcept { return left + width / 2; }
};

inline constexpr double picture_width = 960;
inline constexpr box plot_box = {96, 64, 824, 264};
inline constexpr box strip_box = {96, 336, 824, 14};
inline constexpr double tick_size = 5;
inline constexpr double legend_line = 20;
inline constexpr double text_size = 12;
inline constexpr double name_size = 16;

// Above the plot, from the bottom up: the notes, the title and the name. Notes extend the page upward.
inline constexpr double last_title_line = 48;
inline constexpr double note_height = 18;
inline constexpr double name_height = 20;

/// Returns a coordinate with at most two decimals and no trailing zeros.
[[nodiscard]] std::string coordinate(double pixels);

/// Returns an upper bound of the width of @p text, valid UTF-8, in common fonts of @p size pixels.
[[nodiscard]] double text_width(std::string_view text, double size);

/// Maps the words of a grid to positions between the left and the right side of the plot.
class column_scale {
public:
    explicit column_scale(const column_grid& columns) : grid(columns) {}

    /// Returns the left side of @p column.
    [[nodiscard]] std::string begin(std::uint32_t column) const;
    /// Returns the right side of @p column.
    [[nodiscard]] std::string end(std::uint32_t column) const;
    [[nodiscard]] double middle_of(std::uint64_t offset) const;
    /// Returns the width of a full column of @p part.
    [[nodiscard]] double column_width(const column_grid::part& part) const;
    /// Returns the box with the width of @p part and the height of @p within.
    [[nodiscard]] box box_of(const column_grid::part& part, const box& within) const;
    /// Returns the pixels of a unit of room.
    [[nodiscard]] double unit() const;

private:
    /// Returns the position of the word at @p offset of @p part. A fraction is a position within the word.
    [[nodiscard]] double x_of(const column_grid::part& part, double offset) const;

    column_grid grid;
};

} // namespace kvrimage::svg

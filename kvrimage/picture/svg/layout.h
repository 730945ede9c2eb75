#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage::svg {

/// A rectangle, in pixels.
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

// Above the plot, from below: the notes, the title and the name. Where there are notes the page begins
// higher.
inline constexpr double last_title_line = 48;
inline constexpr double note_height = 18;
inline constexpr double name_height = 20;

/// A coordinate: at most two digits after the point, and none that is not needed.
[[nodiscard]] std::string coordinate(double pixels);

/// The width of @p text, valid UTF-8, in letters of @p size pixels: no less than it is in the usual fonts.
[[nodiscard]] double text_width(std::string_view text, double size);

/// Where the words of a grid are, from the left to the right side of the plot.
class column_scale {
public:
    explicit column_scale(const column_grid& columns) : grid(columns) {}

    /// The left side of @p column.
    [[nodiscard]] std::string begin(std::uint32_t column) const;
    /// The right side of @p column.
    [[nodiscard]] std::string end(std::uint32_t column) const;
    [[nodiscard]] double middle_of(std::uint64_t offset) const;
    /// Of a column of @p part with all its words.
    [[nodiscard]] double column_width(const column_grid::part& part) const;
    /// As wide as @p part, as high as @p within.
    [[nodiscard]] box box_of(const column_grid::part& part, const box& within) const;
    /// Pixels for a unit of the grid's room.
    [[nodiscard]] double unit() const;

private:
    /// Where the word at @p offset of @p part begins; fractions are within the word.
    [[nodiscard]] double x_of(const column_grid::part& part, double offset) const;

    column_grid grid;
};

} // namespace kvrimage::svg

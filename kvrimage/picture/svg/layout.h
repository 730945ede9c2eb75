#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <string>

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
inline constexpr double legend_top = 406;
inline constexpr double legend_line = 20;

/// A coordinate: at most two digits after the point, and none that is not needed.
[[nodiscard]] std::string coordinate(double pixels);

/// Where the words of a grid are, from the left to the right side of the plot.
class column_scale {
public:
    explicit column_scale(const column_grid& columns) : grid(columns) {}

    /// Where the word at @p offset begins; fractions are within the word.
    [[nodiscard]] double x_of(double offset) const;
    [[nodiscard]] std::string begin(std::uint32_t column) const;
    /// The right side of @p column.
    [[nodiscard]] std::string end(std::uint32_t column) const;
    [[nodiscard]] double column_width() const;
    [[nodiscard]] double words_a_pixel() const;

private:
    column_grid grid;
};

} // namespace kvrimage::svg

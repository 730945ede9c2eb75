#include "kvrimage/picture/svg/margins.h"
#include "kvrimage/picture/svg/plot.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage::svg {

namespace {

/// Maps values to y coordinates in the plot.
class value_scale {
public:
    explicit value_scale(const value_axis& values) : axis(values) {}
    [[nodiscard]] double y_of(std::uint64_t key) const {
        constexpr double margin = 6; // between the extreme values and the frame
        return plot_box.bottom() - margin - axis.position_of(key) * (plot_box.height - 2 * margin);
    }

private:
    value_axis axis;
};

/// Adjacent columns with values.
struct curve {
    std::uint32_t begin;
    std::uint32_t end; ///< exclusive
    bool is_line;      ///< all columns have one value each; otherwise it is an area
};

/// Returns the curves. Each lies within a stretch of @p grid.
std::vector<curve> curves_of(const waveform& wave, const column_grid& grid) {
    const auto& columns = wave.columns();
    std::vector<curve> found;
    for (std::uint32_t column = 0; column < columns.size(); ++column) {
        if (columns[column]) {
            if (found.empty() || found.back().end != column ||
                grid.part_of_column(column).first_column == column) {
                found.push_back({column, column, true});
            }
            found.back().end = column + 1;
            found.back().is_line &= columns[column]->lowest == columns[column]->highest;
        }
    }
    return found;
}

/// Writes curves as paths.
class curve_paths {
public:
    curve_paths(const picture_contents& contents, const waveform& drawn, const value_scale& heights)
        : wave(drawn),
          x(contents.grid),
          y(heights) {}

    /// Returns the steps from column to column.
    [[nodiscard]] std::string greatest_values(const curve& part) const {
        std::string path;
        std::string before;
        for (std::uint32_t column = part.begin; column < part.end; ++column) {
            const std::string height = coordinate(y.y_of(wave.columns()[column]->highest));
            if (height != before) {
                const bool is_first = column == part.begin;
                path += fmt::format("{}{}{}{}", is_first ? "M" : "H", x.begin(column), is_first ? " " : "V",
                                    height);
            }
            before = height;
        }
        return path + "H" + x.end(part.end - 1);
    }
    /// Returns the outline along the greatest values and back along the least.
    [[nodiscard]] std::string envelope(const curve& part) const {
        std::string path = greatest_values(part);
        std::string before;
        for (std::uint32_t column = part.end; column-- > part.begin;) {
            const std::string height = coordinate(y.y_of(wave.columns()[column]->lowest));
            if (height != before) {
                path += (column + 1 < part.end ? 'H' + x.end(column) : "") + "V" + height;
            }
            before = height;
        }
        return path + "H" + x.begin(part.begin) + "Z";
    }

    /// Returns bars from the value with the key @p base to the nearest value of each column.
    [[nodiscard]] std::string bars(const curve& part, std::uint64_t base) const {
        const std::string floor = coordinate(y.y_of(base));
        std::string path = fmt::format("M{} {}", x.begin(part.begin), floor);
        std::string before = floor;
        for (std::uint32_t column = part.begin; column < part.end; ++column) {
            const value_bounds& bounds = *wave.columns()[column];
            const std::string height = coordinate(y.y_of(std::clamp(base, bounds.lowest, bounds.highest)));
            if (height != before) {
                path += column > part.begin ? fmt::format("H{}V{}", x.begin(column), height)
                                            : fmt::format("V{}", height);
            }
            before = height;
        }
        return path + "H" + x.end(part.end - 1) + "V" + floor + "Z";
    }

private:
    const waveform& wave;
    column_scale x;
    value_scale y;
};

/// Returns bands with the height of the plot for columns whose words all have don't-care bits.
std::string dont_care_bands(const picture_contents& contents, const waveform& wave) {
    const column_scale x(contents.grid);
    std::string path;
    for (std::uint32_t column = 0; column < contents.grid.columns(); ++column) {
        if (wave.is_dont_care(column)) {
            path += fmt::format("M{0} {1}H{2}v{3}H{0}z", x.begin(column), coordinate(plot_box.top),
                                x.end(column), coordinate(plot_box.height));
        }
    }
    return path;
}

/// Returns a horizontal line at @p y through all stretches.
std::string line_at(double y, const column_grid& grid) {
    std::string path;
    for (const column_grid::part& part : grid.parts()) {
        const box within = column_scale(grid).box_of(part, plot_box);
        path += fmt::format("M{} {}H{}", coordinate(within.left), coordinate(y), coordinate(within.right()));
    }
    return path;
}

/// Draws the grid and returns the left side of the labels.
double draw_grid(document& page, const picture_contents& contents, const waveform& wave,
                 const value_scale& heights) {
    constexpr std::uint32_t most_ticks = 8;
    for (const address_label& label : address_labels(contents)) {
        page.add_path("grid", fmt::format("M{} {}V{}", coordinate(label.mark), coordinate(plot_box.top),
                                          coordinate(plot_box.bottom())));
    }
    double left = plot_box.left;
    for (const value_tick& tick : ticks_of(wave.order(), wave.axis(), most_ticks)) {
        const double y = heights.y_of(tick.key);
        page.add_path("grid", line_at(y, contents.grid));
        left = std::min(left, draw_vertical_tick(page, y, tick.label));
    }
    return left;
}

} // namespace

plot_margins draw_curves(document& page, const picture_contents& contents, const waveform& wave) {
    const value_axis axis = wave.axis();
    const std::uint64_t base = axis.bar_base(wave.order());
    const value_scale heights(axis);
    const curve_paths paths(contents, wave, heights);
    std::string bars;
    std::string lines;
    std::string areas;
    for (const curve& part : curves_of(wave, contents.grid)) {
        bars += paths.bars(part, base);
        (part.is_line ? lines : areas) += part.is_line ? paths.greatest_values(part) : paths.envelope(part);
    }
    const std::string bands = dont_care_bands(contents, wave);
    plot_margins margins;
    page.add_path("bar", bars);
    page.add_path("care", bands);
    margins.left = draw_grid(page, contents, wave, heights);
    if (base == wave.order().key_of_zero()) {
        page.add_path("zero", line_at(heights.y_of(base), contents.grid));
    }
    draw_frames(page, contents.grid, plot_box);
    page.add_path("envelope", areas);
    page.add_path("wave", lines);
    if (!bars.empty()) {
        margins.legend.push_back({"bar", "value"});
    }
    if (!areas.empty()) {
        margins.legend.push_back({"envelope", "least to greatest"});
    }
    if (!bands.empty()) {
        margins.legend.push_back({"care", "don't care"});
    }
    return margins;
}

} // namespace kvrimage::svg

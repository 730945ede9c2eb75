#include "kvrimage/picture/svg/margins.h"
#include "kvrimage/picture/svg/plot.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage::svg {

namespace {

/// The heights of values in the plot.
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

/// Neighbouring columns with values.
struct curve {
    std::uint32_t begin;
    std::uint32_t end; ///< exclusive
    bool is_line;      ///< all columns have one value each; else it is an area
};

std::vector<curve> curves_of(const waveform& wave) {
    const auto& columns = wave.columns();
    std::vector<curve> found;
    for (std::uint32_t column = 0; column < columns.size(); ++column) {
        if (columns[column]) {
            if (found.empty() || found.back().end != column) {
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

    /// The steps from column to column.
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
    /// Along the greatest values and back along the least.
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

private:
    const waveform& wave;
    column_scale x;
    value_scale y;
};

void draw_grid(document& page, const picture_contents& contents, const waveform& wave,
               const value_scale& heights) {
    constexpr std::uint32_t most_ticks = 8;
    for (const address_tick& tick : address_ticks(contents)) {
        page.add_path("grid", fmt::format("M{} {}V{}", coordinate(x_of_tick(contents, tick)),
                                          coordinate(plot_box.top), coordinate(plot_box.bottom())));
    }
    for (const value_tick& tick : ticks_of(wave.order(), wave.axis(), most_ticks)) {
        const double y = heights.y_of(tick.key);
        page.add_path("grid", fmt::format("M{} {}H{}", coordinate(plot_box.left), coordinate(y),
                                          coordinate(plot_box.right())));
        draw_vertical_tick(page, y, tick.label);
    }
}

} // namespace

void draw_curves(document& page, const picture_contents& contents, const waveform& wave) {
    const value_scale heights(wave.axis());
    const curve_paths paths(contents, wave, heights);
    std::string lines;
    std::string areas;
    for (const curve& part : curves_of(wave)) {
        (part.is_line ? lines : areas) += part.is_line ? paths.greatest_values(part) : paths.envelope(part);
    }
    draw_grid(page, contents, wave, heights);
    page.add_box("frame", plot_box);
    page.add_path("envelope", areas);
    page.add_path("wave", lines);
}

} // namespace kvrimage::svg

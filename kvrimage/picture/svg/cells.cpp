#include "kvrimage/picture/svg/margins.h"
#include "kvrimage/picture/svg/plot.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace kvrimage::svg {

namespace {

/// The shades that are drawn; what is left out is white, or was never set.
constexpr std::array<std::pair<bit_shade, const char*>, 5> drawn_shades = {{{bit_shade::low, "low"},
                                                                            {bit_shade::half, "half"},
                                                                            {bit_shade::high, "high"},
                                                                            {bit_shade::all, "all"},
                                                                            {bit_shade::dont_care, "care"}}};

constexpr std::array<legend_entry, 6> shade_legend = {{{"none", "ones: none"},
                                                       {"low", "less than 30 %"},
                                                       {"half", "30 to 70 %"},
                                                       {"high", "more"},
                                                       {"all", "all"},
                                                       {"care", "don't care (half or more)"}}};

/// Strokes for the cells of one shade in a row, which is @p line from the top. The first is placed from the
/// corner, the others from the end of the one before.
std::string strokes_of_row(const bit_map& map, bit_shade shade, std::uint32_t line, std::uint32_t columns) {
    const std::uint32_t row = map.rows() - 1 - line;
    std::string path;
    std::uint32_t pen = 0;
    for (std::uint32_t begin = 0; begin < columns;) {
        std::uint32_t end = begin;
        while (end < columns && map.shade(row, end) == shade) {
            ++end;
        }
        if (end == begin) {
            ++begin;
            continue;
        }
        path += path.empty() ? fmt::format("M{} {}h{}", begin, line, end - begin)
                             : fmt::format("m{} 0h{}", begin - pen, end - begin);
        begin = pen = end;
    }
    return path;
}

std::string strokes_of(const bit_map& map, bit_shade shade, std::uint32_t columns) {
    std::string path;
    for (std::uint32_t line = 0; line < map.rows(); ++line) {
        path += strokes_of_row(map, shade, line, columns);
    }
    return path;
}

} // namespace

void draw_cells(document& page, const picture_contents& contents, const bit_map& map) {
    constexpr std::uint32_t most_ticks = 9;
    const double cell_height = plot_box.height / map.rows();
    page.add_path("unset", stretches_path(contents.strip, occupancy::unset, plot_box));
    page.begin_cells("bits", plot_box, column_scale(contents.grid).column_width(), cell_height);
    for (const auto& [shade, style] : drawn_shades) {
        page.add_path(style, strokes_of(map, shade, contents.grid.columns()));
    }
    page.end_cells();
    for (const std::uint32_t bit : map.ticks(most_ticks)) {
        const double middle = map.row_of(bit) + 0.5;
        draw_vertical_tick(page, plot_box.bottom() - middle * cell_height, fmt::format("{}", bit));
    }
    page.add_box("frame", plot_box);
}

void draw_shade_legend(document& page) {
    page.add_legend(shade_legend, legend_top + legend_line);
}

} // namespace kvrimage::svg

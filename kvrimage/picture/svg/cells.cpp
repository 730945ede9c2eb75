#include "kvrimage/picture/svg/margins.h"
#include "kvrimage/picture/svg/plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace kvrimage::svg {

namespace {

struct shade_look {
    bit_shade shade;
    legend_entry entry;
};

/// All shades except that of unset cells.
constexpr std::array<shade_look, 6> shade_looks = {{{bit_shade::none, {"none", "ones: none"}},
                                                    {bit_shade::low, {"low", "ones: less than 30 %"}},
                                                    {bit_shade::half, {"half", "ones: 30 to 70 %"}},
                                                    {bit_shade::high, {"high", "ones: more"}},
                                                    {bit_shade::all, {"all", "ones: all"}},
                                                    {bit_shade::dont_care, {"care", "don't care"}}}};

/// Returns strokes for the cells of one shade in a row, which is @p line from the top. The first stroke is
/// positioned relative to the corner, each other one relative to the end of the previous one.
std::string strokes_of_row(const bit_map& map, bit_shade shade, std::uint32_t line,
                           const column_grid::part& part) {
    const std::uint32_t row = map.rows() - 1 - line;
    const std::uint32_t columns = part.columns();
    std::string path;
    std::uint32_t pen = 0;
    for (std::uint32_t begin = 0; begin < columns;) {
        std::uint32_t end = begin;
        while (end < columns && map.shade(row, part.first_column + end) == shade) {
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

std::string strokes_of(const bit_map& map, bit_shade shade, const column_grid::part& part) {
    std::string path;
    for (std::uint32_t line = 0; line < map.rows(); ++line) {
        path += strokes_of_row(map, shade, line, part);
    }
    return path;
}

} // namespace

plot_margins draw_cells(document& page, const picture_contents& contents, const bit_map& map) {
    constexpr std::uint32_t most_ticks = 9;
    const double cell_height = plot_box.height / map.rows();
    const column_scale scale(contents.grid);
    plot_margins margins;
    page.add_path("unset", stretches_path(contents.strip, occupancy::unset, plot_box));
    std::array<bool, shade_looks.size()> occurs{};
    for (const column_grid::part& part : contents.grid.parts()) {
        page.begin_cells("bits", scale.box_of(part, plot_box), scale.column_width(part), cell_height);
        for (std::size_t index = 0; index < shade_looks.size(); ++index) {
            const std::string strokes = strokes_of(map, shade_looks[index].shade, part);
            occurs[index] |= !strokes.empty();
            // Cells without ones show the background.
            if (shade_looks[index].shade != bit_shade::none) {
                page.add_path(shade_looks[index].entry.style, strokes);
            }
        }
        page.end_cells();
    }
    for (std::size_t index = 0; index < shade_looks.size(); ++index) {
        if (occurs[index]) {
            margins.legend.push_back(shade_looks[index].entry);
        }
    }
    for (const std::uint32_t bit : map.ticks(most_ticks)) {
        const double middle = map.row_of(bit) + 0.5;
        margins.left =
            std::min(margins.left, draw_vertical_tick(page, plot_box.bottom() - middle * cell_height,
                                                      fmt::format("{}", bit)));
    }
    draw_frames(page, contents.grid, plot_box);
    return margins;
}

} // namespace kvrimage::svg

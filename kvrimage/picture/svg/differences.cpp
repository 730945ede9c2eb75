#include "kvrimage/picture/svg/margins.h"
#include "kvrimage/picture/svg/plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace kvrimage::svg {

namespace {

struct lane_look {
    const char* style;
    const char* name;
};

/// Indexed by difference_kind.
constexpr std::array<lane_look, difference_kinds.size()> lane_looks = {
    {{"changed", "changed"}, {"left", "only A"}, {"right", "only B"}}};

box box_of_lane(std::size_t lane) {
    constexpr double gap = 12;
    constexpr double height = (plot_box.height - gap * (lane_looks.size() - 1)) / lane_looks.size();
    return {plot_box.left, plot_box.top + static_cast<double>(lane) * (height + gap), plot_box.width, height};
}

/// Returns the height of the bar of a column, at least one pixel if a word differs.
double height_of(const difference_map& map, difference_kind kind, std::uint32_t column, const box& lane) {
    return map.count(kind, column) == 0 ? 0 : std::max(1.0, map.share(kind, column) * lane.height);
}

/// Returns bars from the bottom of @p lane. Adjacent bars of the same height are merged.
std::string bars_of(const difference_map& map, difference_kind kind, const column_grid& grid,
                    const box& lane) {
    const column_scale x(grid);
    std::string path;
    for (const column_grid::part& part : grid.parts()) {
        const std::uint32_t last = part.first_column + part.columns();
        for (std::uint32_t begin = part.first_column; begin < last;) {
            const double height = height_of(map, kind, begin, lane);
            std::uint32_t end = begin + 1;
            while (end < last && coordinate(height_of(map, kind, end, lane)) == coordinate(height)) {
                ++end;
            }
            if (height != 0) {
                path += fmt::format("M{0} {1}v-{2}H{3}v{2}z", x.begin(begin), coordinate(lane.bottom()),
                                    coordinate(height), x.end(end - 1));
            }
            begin = end;
        }
    }
    return path;
}

} // namespace

plot_margins draw_differences(document& page, const picture_contents& contents, const difference_map& map) {
    constexpr double half_a_line = 8;
    plot_margins margins;
    for (std::size_t index = 0; index < lane_looks.size(); ++index) {
        const box lane = box_of_lane(index);
        const double middle = lane.top + lane.height / 2;
        const double name_left = draw_side_text(page, middle - half_a_line, lane_looks[index].name);
        const double count_left =
            draw_side_text(page, middle + half_a_line, fmt::format("{}", map.total(difference_kinds[index])));
        margins.left = std::min({margins.left, name_left, count_left});
        page.add_path(lane_looks[index].style, bars_of(map, difference_kinds[index], contents.grid, lane));
        draw_frames(page, contents.grid, lane);
    }
    return margins;
}

} // namespace kvrimage::svg

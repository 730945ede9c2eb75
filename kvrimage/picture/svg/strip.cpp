#include "kvrimage/picture/svg/strip.h"

#include "kvrimage/picture/svg/legend.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace kvrimage::svg {

namespace {

constexpr std::array<std::pair<occupancy, const char*>, 4> strip_classes = {
    {{occupancy::unset, "unset"},
     {occupancy::partly_set, "partly"},
     {occupancy::set, "set"},
     {occupancy::run, "run"}}};

constexpr std::array<legend_entry, 4> strip_legend = {
    {{"set", "set, words differ"}, {"run", "run of one word"}, {"partly", "partly set"}, {"unset", "unset"}}};

/// A line between two runs side by side.
std::string run_begins(const occupancy_strip& strip) {
    const auto& columns = strip.columns();
    std::string path;
    for (std::uint32_t column = 1; column < columns.size(); ++column) {
        if (columns[column].begins_run && columns[column - 1].state() == occupancy::run) {
            path += fmt::format("M{} {}v{}", column_scale(strip.grid()).begin(column),
                                coordinate(strip_box.top), coordinate(strip_box.height));
        }
    }
    return path;
}

} // namespace

std::string stretches_path(const occupancy_strip& strip, occupancy state, const box& within) {
    const column_scale x(strip.grid());
    std::string path;
    for (const occupancy_stretch& stretch : strip.stretches()) {
        if (stretch.state == state) {
            path += fmt::format("M{0} {1}H{2}v{3}H{0}z", x.begin(stretch.begin), coordinate(within.top),
                                x.end(stretch.end - 1), coordinate(within.height));
        }
    }
    return path;
}

void draw_strip(document& page, const occupancy_strip& strip) {
    page.add_box("frame", strip_box);
    for (const auto& [state, style] : strip_classes) {
        page.add_path(style, stretches_path(strip, state, strip_box));
    }
    page.add_path("begin", run_begins(strip));
}

void draw_strip_legend(document& page) {
    draw_legend(page, strip_legend, legend_top);
}

} // namespace kvrimage::svg

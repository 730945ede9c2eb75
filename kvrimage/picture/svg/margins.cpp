#include "kvrimage/picture/svg/margins.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kvrimage::svg {

namespace {

constexpr double label_line = 370;
constexpr double title_line = 390;

/// Of the labels of addresses, at most.
double label_width(const picture_contents& contents) {
    constexpr double digit_width = 7;
    return static_cast<double>(contents.addresses.label_size()) * digit_width;
}

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

std::vector<address_tick> address_ticks(const picture_contents& contents) {
    constexpr double gap = 24;
    return contents.addresses.ticks((label_width(contents) + gap) *
                                    column_scale(contents.grid).words_a_pixel());
}

double x_of_tick(const picture_contents& contents, const address_tick& tick) {
    return column_scale(contents.grid).x_of(static_cast<double>(tick.offset) + 0.5);
}

void draw_address_axis(document& page, const picture_contents& contents) {
    const double last_middle = picture_width - label_width(contents) / 2; // of a label that is not cut
    for (const address_tick& tick : address_ticks(contents)) {
        const double x = x_of_tick(contents, tick);
        page.add_path("tick", fmt::format("M{} {}v{}", coordinate(x), coordinate(strip_box.bottom()),
                                          coordinate(tick_size)));
        page.add_text("middle address", std::min(x, last_middle), label_line, tick.label);
    }
    page.add_text("middle", plot_box.middle(), title_line, "address (words)");
}

void draw_vertical_tick(document& page, double y, std::string_view label) {
    constexpr double gap = 4;
    constexpr double half_a_digit = 4;
    page.add_path("tick",
                  fmt::format("M{} {}h-{}", coordinate(plot_box.left), coordinate(y), coordinate(tick_size)));
    page.add_text("end value", plot_box.left - tick_size - gap, y + half_a_digit, label);
}

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
    page.add_legend(strip_legend, legend_top);
}

} // namespace kvrimage::svg

#include "kvrimage/picture/svg/margins.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

namespace kvrimage::svg {

namespace {

constexpr double label_line = 370;
constexpr double line_height = 16;

struct strip_look {
    occupancy state;
    legend_entry entry;
};

/// In the order of the legend. A style that the plot explains is not explained again.
constexpr std::array<strip_look, 5> strip_looks = {{{occupancy::set, {"set", "set, words differ"}},
                                                    {occupancy::run, {"run", "run of one word"}},
                                                    {occupancy::partly_set, {"partly", "partly set"}},
                                                    {occupancy::dont_care, {"care", "don't care"}},
                                                    {occupancy::unset, {"unset", "unset"}}}};

/// Returns lines between adjacent runs.
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

/// Returns a zigzag in the middle of each break, from the top of the plot to the bottom of the strip.
std::string break_marks(const column_grid& grid) {
    constexpr double half_width = 4;
    constexpr double tooth = 11;
    constexpr int teeth = 13; // 286 pixels
    const column_scale scale(grid);
    std::string path;
    for (std::size_t index = 1; index < grid.parts().size(); ++index) {
        const double left = scale.box_of(grid.parts()[index - 1], plot_box).right();
        const double right = scale.box_of(grid.parts()[index], plot_box).left;
        path +=
            fmt::format("M{} {}", coordinate((left + right) / 2 - half_width / 2), coordinate(plot_box.top));
        for (int count = 0; count < teeth; ++count) {
            path += fmt::format("l{0} {1}l-{0} {1}", coordinate(half_width), coordinate(tooth));
        }
    }
    return path;
}

} // namespace

std::vector<address_label> address_labels(const picture_contents& contents) {
    constexpr double digit_width = 7.7;
    constexpr double gap = 16;
    const column_scale scale(contents.grid);
    return contents.addresses.labels(
        {[&scale](std::uint64_t offset) { return scale.middle_of(offset); }, plot_box.left, scale.unit(),
         static_cast<double>(contents.addresses.label_size()) * digit_width, gap, 0, picture_width});
}

double draw_address_axis(document& page, const picture_contents& contents) {
    constexpr double digit_width = 7.7;
    const double half_width = static_cast<double>(contents.addresses.label_size()) * digit_width / 2;
    double line = label_line;
    for (const address_label& label : address_labels(contents)) {
        const double y = label_line + line_height * label.line;
        page.add_path("tick", fmt::format("M{} {}v{}", coordinate(label.mark), coordinate(strip_box.bottom()),
                                          coordinate(tick_size)));
        page.add_text("middle address", label.begin + half_width, y, label.text);
        line = std::max(line, y);
    }
    page.add_path("break", break_marks(contents.grid));
    page.add_text("middle", plot_box.middle(), line + legend_line, "address (words)");
    return line + legend_line + line_height;
}

void draw_frames(document& page, const column_grid& grid, const box& within) {
    for (const column_grid::part& part : grid.parts()) {
        page.add_box("frame", column_scale(grid).box_of(part, within));
    }
}

double draw_side_text(document& page, double y, std::string_view text) {
    constexpr double gap = 4;
    constexpr double half_a_digit = 4;
    const double right = plot_box.left - tick_size - gap;
    page.add_text("end value", right, y + half_a_digit, text);
    return right - text_width(text, text_size);
}

double draw_vertical_tick(document& page, double y, std::string_view label) {
    page.add_path("tick",
                  fmt::format("M{} {}h-{}", coordinate(plot_box.left), coordinate(y), coordinate(tick_size)));
    return draw_side_text(page, y, label);
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
    draw_frames(page, strip.grid(), strip_box);
    for (const strip_look& look : strip_looks) {
        page.add_path(look.entry.style, stretches_path(strip, look.state, strip_box));
    }
    page.add_path("begin", run_begins(strip));
}

void add_strip_legend(std::vector<legend_entry>& legend, const picture_contents& contents) {
    const bool is_difference = std::holds_alternative<difference_map>(contents.words);
    for (const strip_look& look : strip_looks) {
        const bool occurs = std::ranges::any_of(contents.strip.columns(), [&look](const word_column& column) {
            return column.state() == look.state;
        });
        if (!occurs || std::ranges::find(legend, look.entry.style, &legend_entry::style) != legend.end()) {
            continue;
        }
        legend.push_back(look.entry);
        if (is_difference && look.state == occupancy::set) {
            legend.back().text = "set in A or B";
        }
    }
}

} // namespace kvrimage::svg

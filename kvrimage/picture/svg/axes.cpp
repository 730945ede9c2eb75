#include "kvrimage/picture/svg/axes.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage::svg {

namespace {

constexpr double label_line = 370;
constexpr double title_line = 390;

/// Of the labels of addresses, at most.
double label_width(const picture_contents& contents) {
    constexpr double digit_width = 7;
    return static_cast<double>(contents.addresses.label_size()) * digit_width;
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

} // namespace kvrimage::svg

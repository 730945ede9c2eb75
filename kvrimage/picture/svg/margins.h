#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

#include <string>
#include <string_view>
#include <vector>

// What surrounds the plot: its axes, and the strip.

namespace kvrimage::svg {

/// The ticks of the axis of addresses, as many as its labels have room for.
[[nodiscard]] std::vector<address_tick> address_ticks(const picture_contents& contents);

/// Ticks are in the middle of their words.
[[nodiscard]] double x_of_tick(const picture_contents& contents, const address_tick& tick);

/// Below the strip.
void draw_address_axis(document& page, const picture_contents& contents);

/// A label on the left side of the plot, with its tick.
void draw_vertical_tick(document& page, double y, std::string_view label);

void draw_strip(document& page, const occupancy_strip& strip);

/// What the colours of the strip mean.
void draw_strip_legend(document& page);

/// A box for each stretch of columns with @p state, as high as @p within.
[[nodiscard]] std::string stretches_path(const occupancy_strip& strip, occupancy state, const box& within);

} // namespace kvrimage::svg

#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

#include <string>
#include <string_view>
#include <vector>

// What surrounds the plot: its axes, and the strip.

namespace kvrimage::svg {

/// The labels of the axis of addresses, in pixels.
[[nodiscard]] std::vector<address_label> address_labels(const picture_contents& contents);

/// Below the strip, with the marks of breaks. Returns where the legend can begin.
[[nodiscard]] double draw_address_axis(document& page, const picture_contents& contents);

/// A frame for each stretch of @p grid, as high as @p within.
void draw_frames(document& page, const column_grid& grid, const box& within);

/// A label on the left side of the plot, with its tick. Returns where it begins.
double draw_vertical_tick(document& page, double y, std::string_view label);

/// A text beside the plot, which ends where the labels do. Returns where it begins.
double draw_side_text(document& page, double y, std::string_view text);

void draw_strip(document& page, const occupancy_strip& strip);

/// Adds what the colours of the strip mean that occur in it and are not in @p legend.
void add_strip_legend(std::vector<legend_entry>& legend, const picture_contents& contents);

/// A box for each stretch of columns with @p state, as high as @p within.
[[nodiscard]] std::string stretches_path(const occupancy_strip& strip, occupancy state, const box& within);

} // namespace kvrimage::svg

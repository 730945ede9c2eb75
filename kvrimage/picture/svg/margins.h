#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

#include <string>
#include <string_view>
#include <vector>

// The parts around the plot: the axes and the strip.

namespace kvrimage::svg {

/// Returns the labels of the address axis, in pixels.
[[nodiscard]] std::vector<address_label> address_labels(const picture_contents& contents);

/// Draws the address axis below the strip, and the marks of breaks. Returns the top of the legend.
[[nodiscard]] double draw_address_axis(document& page, const picture_contents& contents);

/// Draws a frame around each stretch of @p grid, with the height of @p within.
void draw_frames(document& page, const column_grid& grid, const box& within);

/// Draws a label to the left of the plot, with its tick. Returns its left side.
double draw_vertical_tick(document& page, double y, std::string_view label);

/// Draws a text beside the plot, aligned with the ends of the labels. Returns its left side.
double draw_side_text(document& page, double y, std::string_view text);

void draw_strip(document& page, const occupancy_strip& strip);

/// Adds the colors of the strip that occur to @p legend, unless it has them already.
void add_strip_legend(std::vector<legend_entry>& legend, const picture_contents& contents);

/// Returns a path with a box for each stretch of columns in @p state, with the height of @p within.
[[nodiscard]] std::string stretches_path(const occupancy_strip& strip, occupancy state, const box& within);

} // namespace kvrimage::svg

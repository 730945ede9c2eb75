#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

#include <vector>

namespace kvrimage::svg {

/// What a plot reports for the parts around it.
struct plot_margins {
    double left = plot_box.left;      ///< left side of the labels
    std::vector<legend_entry> legend; ///< entries for what occurs in the plot
};

/// Draws the plot of @p wave, the waveform of @p contents, with its grid and labels.
[[nodiscard]] plot_margins draw_curves(document& page, const picture_contents& contents,
                                       const waveform& wave);

/// Draws the plot of @p map, the bit map of @p contents, with its labels.
[[nodiscard]] plot_margins draw_cells(document& page, const picture_contents& contents, const bit_map& map);

/// Draws the plot of @p map, the differences of @p contents: a lane for each kind, with its count.
[[nodiscard]] plot_margins draw_differences(document& page, const picture_contents& contents,
                                            const difference_map& map);

} // namespace kvrimage::svg

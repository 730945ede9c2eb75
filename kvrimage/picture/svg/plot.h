#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

#include <vector>

namespace kvrimage::svg {

/// What a plot leaves to be drawn around it.
struct plot_margins {
    double left = plot_box.left;      ///< where the labels on its left side begin
    std::vector<legend_entry> legend; ///< of what occurs in it
};

/// The plot of @p wave, which is that of @p contents, with its grid and its labels.
[[nodiscard]] plot_margins draw_curves(document& page, const picture_contents& contents,
                                       const waveform& wave);

/// The plot of @p map, which is that of @p contents, with its labels.
[[nodiscard]] plot_margins draw_cells(document& page, const picture_contents& contents, const bit_map& map);

/// The plot of @p map, which is that of @p contents: a lane for each kind of difference, with its count.
[[nodiscard]] plot_margins draw_differences(document& page, const picture_contents& contents,
                                            const difference_map& map);

} // namespace kvrimage::svg

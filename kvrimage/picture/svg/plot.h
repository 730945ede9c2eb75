#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

namespace kvrimage::svg {

/// The plot of @p wave, which is that of @p contents, with its grid and its labels.
void draw_curves(document& page, const picture_contents& contents, const waveform& wave);

/// The plot of @p map, which is that of @p contents, with its labels.
void draw_cells(document& page, const picture_contents& contents, const bit_map& map);

/// What the shades of the cells mean, a line of text below the legend of the strip.
void draw_shade_legend(document& page);

} // namespace kvrimage::svg

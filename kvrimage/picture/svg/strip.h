#pragma once

#include "kvrimage/picture/occupancy_strip.h"
#include "kvrimage/picture/svg/document.h"

#include <string>

namespace kvrimage::svg {

void draw_strip(document& page, const occupancy_strip& strip);

/// What the colours of the strip mean.
void draw_strip_legend(document& page);

/// A box for each stretch of columns with @p state, as high as @p within.
[[nodiscard]] std::string stretches_path(const occupancy_strip& strip, occupancy state, const box& within);

} // namespace kvrimage::svg

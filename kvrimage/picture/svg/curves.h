#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

namespace kvrimage::svg {

/// The plot of @p wave, which is that of @p contents, with its grid and its labels.
void draw_curves(document& page, const picture_contents& contents, const waveform& wave);

} // namespace kvrimage::svg

#pragma once

#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/svg/document.h"

#include <string_view>
#include <vector>

namespace kvrimage::svg {

/// The ticks of the axis of addresses, as many as its labels have room for.
[[nodiscard]] std::vector<address_tick> address_ticks(const picture_contents& contents);

/// Ticks are in the middle of their words.
[[nodiscard]] double x_of_tick(const picture_contents& contents, const address_tick& tick);

/// Below the strip.
void draw_address_axis(document& page, const picture_contents& contents);

/// A label on the left side of the plot, with its tick.
void draw_vertical_tick(document& page, double y, std::string_view label);

} // namespace kvrimage::svg

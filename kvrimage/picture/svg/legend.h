#pragma once

#include "kvrimage/picture/svg/document.h"

#include <span>
#include <string_view>

namespace kvrimage::svg {

struct legend_entry {
    std::string_view style;
    std::string_view text;
};

/// @p entries side by side.
void draw_legend(document& page, std::span<const legend_entry> entries, double top);

} // namespace kvrimage::svg

#include "kvrimage/picture/svg/legend.h"

#include <fmt/format.h>

namespace kvrimage::svg {

void draw_legend(document& page, std::span<const legend_entry> entries, double top) {
    constexpr double swatch_size = 12;
    constexpr double text_offset = swatch_size + 6;
    constexpr double gap = 24;
    constexpr double character_width = 6.2; // on average
    double x = plot_box.left;
    for (const legend_entry& entry : entries) {
        page.add_box(fmt::format("{} swatch", entry.style), {x, top, swatch_size, swatch_size});
        page.add_text("legend", x + text_offset, top + swatch_size - 2, entry.text);
        x += text_offset + gap + character_width * static_cast<double>(entry.text.size());
    }
}

} // namespace kvrimage::svg

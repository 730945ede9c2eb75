#include "tools/kvrmem/files/diagnostic_colors.h"

#include <array>
#include <cstddef>

namespace kvrmem {

kvrimage::text_painter diagnostic_painter(std::FILE* stream, color_choice choice) {
    const painter paint = painter_for(stream, choice);
    if (!paint.colored()) {
        return {};
    }
    return [paint](kvrimage::text_part part, std::string_view text) {
        // In the order of text_part.
        constexpr std::array styles = {style::bold, style::bold_red, style::bold_magenta, style::green};
        return paint.paint(styles[static_cast<std::size_t>(part)], text);
    };
}

} // namespace kvrmem

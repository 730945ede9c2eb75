#include "kvrimage/picture/svg/svg_picture.h"

#include "kvrimage/picture/shown_text.h"
#include "kvrimage/picture/svg/margins.h"
#include "kvrimage/picture/svg/plot.h"

#include <algorithm>
#include <variant>

namespace kvrimage::svg {

namespace {

constexpr std::uint32_t waveform_columns = 1648; // two for each pixel
constexpr std::uint32_t map_columns = 412;       // two pixels each, also in the strip
constexpr double columns_a_character = 4;
constexpr std::uint32_t break_columns = 12;

/// Draws the lines of titles upward from the lowest one.
void draw_titles(document& page, const picture_contents& contents) {
    constexpr std::size_t longest_name = 80;
    constexpr double margin = 8;
    const double room = picture_width - plot_box.left - margin;
    double line = last_title_line - note_height * static_cast<double>(contents.notes.size());
    if (!contents.name.empty()) {
        page.add_fitted_text("name", plot_box.left, line - name_height,
                             shortened(contents.name, longest_name, "…"), name_size, room);
    }
    page.add_fitted_text("title", plot_box.left, line, contents.title, text_size, room);
    for (const std::string& note : contents.notes) {
        line += note_height;
        page.add_fitted_text("note", plot_box.left, line, note, text_size, room);
    }
}

} // namespace

picture_size size_for(std::uint32_t width, std::uint32_t rows) noexcept {
    return {width > widest_waveform ? map_columns : waveform_columns, rows, map_columns, columns_a_character,
            break_columns};
}

picture_size difference_size() noexcept {
    return {map_columns, 0, map_columns, columns_a_character, break_columns};
}

std::string draw(const picture_contents& contents) {
    constexpr double usual_title_middle = 20; // of the upright title
    constexpr double title_gap = 14;
    constexpr double margin = 6;
    document page;
    draw_titles(page, contents);
    plot_margins margins;
    if (const auto* const map = std::get_if<bit_map>(&contents.words)) {
        margins = draw_cells(page, contents, *map);
    } else if (const auto* const differences = std::get_if<difference_map>(&contents.words)) {
        margins = draw_differences(page, contents, *differences);
    } else {
        margins = draw_curves(page, contents, std::get<waveform>(contents.words));
    }
    const double title_middle = std::min(usual_title_middle, margins.left - title_gap);
    page.add_upright_text(title_middle, plot_box.top + plot_box.height / 2, contents.vertical_title);
    draw_strip(page, contents.strip);
    const double legend_top = draw_address_axis(page, contents);
    add_strip_legend(margins.legend, contents);
    const double bottom = page.add_legend(margins.legend, legend_top) + margin;
    const double left = title_middle - usual_title_middle;
    const double top = -note_height * static_cast<double>(contents.notes.size());
    return page.take({left, top, picture_width - left, bottom - top},
                     contents.name.empty() ? contents.title : contents.name + ": " + contents.title);
}

} // namespace kvrimage::svg

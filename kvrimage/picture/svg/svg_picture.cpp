#include "kvrimage/picture/svg/svg_picture.h"

#include "kvrimage/picture/shown_text.h"
#include "kvrimage/picture/svg/margins.h"
#include "kvrimage/picture/svg/plot.h"

#include <variant>

namespace kvrimage::svg {

namespace {

constexpr std::uint32_t waveform_columns = 1648; // two a pixel
constexpr std::uint32_t map_columns = 412;       // two pixels each; of the strip, too
constexpr std::uint32_t map_rows = 128;

document blank_page(const picture_contents& contents, bool has_map) {
    constexpr double margin = 6;
    const double height = legend_top + legend_line * (has_map ? 2 : 1) + margin;
    return {picture_width, height,
            contents.name.empty() ? contents.title : contents.name + ": " + contents.title};
}

void draw_titles(document& page, const picture_contents& contents) {
    constexpr std::size_t longest_name = 80;
    constexpr double name_line = 28;
    constexpr double picture_title_line = 48;
    constexpr double vertical_title_middle = 20;
    if (!contents.name.empty()) {
        page.add_text("name", plot_box.left, name_line, shortened(contents.name, longest_name, "…"));
    }
    page.add_text("title", plot_box.left, picture_title_line,
                  contents.note.empty() ? contents.title : contents.title + "; " + contents.note);
    page.add_upright_text(vertical_title_middle, plot_box.top + plot_box.height / 2, contents.vertical_title);
}

} // namespace

picture_size size_for(std::uint32_t width) noexcept {
    return {width > widest_waveform ? map_columns : waveform_columns, map_rows, map_columns};
}

std::string draw(const picture_contents& contents) {
    const auto* map = std::get_if<bit_map>(&contents.words);
    document page = blank_page(contents, map != nullptr);
    draw_titles(page, contents);
    if (map != nullptr) {
        draw_cells(page, contents, *map);
    } else {
        draw_curves(page, contents, std::get<waveform>(contents.words));
    }
    draw_strip(page, contents.strip);
    draw_address_axis(page, contents);
    draw_strip_legend(page);
    if (map != nullptr) {
        draw_shade_legend(page);
    }
    return page.take();
}

} // namespace kvrimage::svg

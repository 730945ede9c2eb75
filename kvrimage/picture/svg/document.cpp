#include "kvrimage/picture/svg/document.h"

#include "kvrimage/diagnostics/xml_text.h"

#include <algorithm>

namespace kvrimage::svg {

namespace {

constexpr const char* style_sheet =
    "text{font:12px \"DejaVu Sans\",Verdana,Arial,sans-serif;fill:#333}"
    ".page{fill:#fff}.name{font-size:16px;font-weight:bold;fill:#111}"
    ".middle{text-anchor:middle}.end{text-anchor:end}"
    ".frame,.tick{fill:none;stroke:#555}.grid{fill:none;stroke:#e2e2e2}.zero{fill:none;stroke:#333}"
    ".break{fill:none;stroke:#999;stroke-width:1.2}"
    ".bar{fill:#d3e4f4}.wave{fill:none;stroke:#1b5e9e;stroke-width:1.5;stroke-linejoin:round;"
    "stroke-linecap:square}"
    ".envelope{fill:#9cc3e6;stroke:#1b5e9e;stroke-width:.7;stroke-linejoin:round}"
    ".set{fill:#1b5e9e}.run{fill:#8fbfe8}.partly{fill:#e3a02b}.unset{fill:#f3ead3}"
    ".begin{fill:none;stroke:#fff;stroke-width:1.2}"
    ".changed{fill:#b86e00}.left{fill:#b3261e}.right{fill:#2e7d32}"
    ".bits{fill:none;stroke-width:1;shape-rendering:crispEdges}"
    ".none{fill:#fff;stroke:#fff}.low{fill:#c6c6c6;stroke:#c6c6c6}.half{fill:#8c8c8c;stroke:#8c8c8c}"
    ".high{fill:#525252;stroke:#525252}.all{fill:#111;stroke:#111}.care{fill:#d77fae}"
    ".bits .care{stroke:#d77fae}.swatch{stroke:#777;stroke-width:.6}";

/// The colors of the dark style.
constexpr const char* dark_colors =
    "text{fill:#ccc}.page{fill:#1c1c1c}.name{fill:#eee}"
    ".frame,.tick{stroke:#999}.grid{stroke:#383838}.zero{stroke:#ccc}.break{stroke:#888}"
    ".bar{fill:#223c56}.wave{stroke:#79b8f3}.envelope{fill:#3a6894;stroke:#79b8f3}"
    ".set{fill:#79b8f3}.run{fill:#35608a}.partly{fill:#e3a02b}.unset{fill:#4a4230}.begin{stroke:#1c1c1c}"
    ".changed{fill:#f0b050}.left{fill:#f28b82}.right{fill:#81c995}"
    ".none{fill:#1c1c1c;stroke:#1c1c1c}.low{fill:#4a4a4a;stroke:#4a4a4a}.half{fill:#808080;stroke:#808080}"
    ".high{fill:#b8b8b8;stroke:#b8b8b8}.all{fill:#f2f2f2;stroke:#f2f2f2}.care{fill:#b85c8e}"
    ".bits .care{stroke:#b85c8e}.swatch{stroke:#999}";

std::string attributes_of(const box& at) {
    return fmt::format(R"(x="{}" y="{}" width="{}" height="{}")", coordinate(at.left), coordinate(at.top),
                       coordinate(at.width), coordinate(at.height));
}

} // namespace

void document::add_box(std::string_view style, const box& at) {
    add("<rect class=\"{}\" {}/>\n", style, attributes_of(at));
}

void document::add_text(std::string_view style, double x, double y, std::string_view words) {
    add("<text class=\"{}\" x=\"{}\" y=\"{}\">{}</text>\n", style, coordinate(x), coordinate(y),
        xml_text(words));
}

void document::add_fitted_text(std::string_view style, double x, double y, std::string_view words,
                               double size, double room) {
    const double width = text_width(words, size);
    if (width <= room) {
        add_text(style, x, y, words);
        return;
    }
    add("<text class=\"{}\" x=\"{}\" y=\"{}\" style=\"font-size:{}px\">{}</text>\n", style, coordinate(x),
        coordinate(y), coordinate(size * room / width), xml_text(words));
}

void document::add_upright_text(double x, double y, std::string_view words) {
    add("<text class=\"middle\" transform=\"translate({} {}) rotate(-90)\">{}</text>\n", coordinate(x),
        coordinate(y), xml_text(words));
}

void document::add_path(std::string_view style, std::string_view path) {
    if (!path.empty()) {
        add("<path class=\"{}\" d=\"{}\"/>\n", style, path);
    }
}

void document::add_pixels(const box& at, std::string_view source) {
    add("<image {} preserveAspectRatio=\"none\" style=\"image-rendering:pixelated\" href=\"{}\"/>\n",
        attributes_of(at), source);
}

void document::begin_cells(std::string_view style, const box& at, double cell_width, double cell_height) {
    add("<svg {}><g class=\"{}\" transform=\"scale({:.6g} {:.6g})translate(0 .5)\">\n", attributes_of(at),
        style, cell_width, cell_height);
}

void document::end_cells() {
    add("</g></svg>\n");
}

double document::add_legend(std::span<const legend_entry> entries, double top) {
    constexpr double swatch_size = 12;
    constexpr double text_offset = swatch_size + 6;
    constexpr double gap = 16;
    double x = plot_box.left;
    for (const legend_entry& entry : entries) {
        const double width = text_offset + text_width(entry.text, text_size);
        if (x + width > plot_box.right()) {
            x = plot_box.left;
            top += legend_line;
        }
        add_box(fmt::format("{} swatch", entry.style), {x, top, swatch_size, swatch_size});
        add_text("legend", x + text_offset, top + swatch_size - 2, entry.text);
        x += width + gap;
    }
    return top + legend_line;
}

std::string document::take(const box& page, std::string_view title) {
    return fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{2}\" height=\"{3}\" "
                       "viewBox=\"{0} {1} {2} {3}\" role=\"img\">\n<title>{4}</title>\n"
                       "<style>{5}@media (prefers-color-scheme:dark){{{6}}}</style>\n"
                       "<rect class=\"page\" {7}/>\n{8}</svg>\n",
                       coordinate(page.left), coordinate(page.top), coordinate(page.width),
                       coordinate(page.height), xml_text(title), style_sheet, dark_colors,
                       attributes_of(page), text);
}

} // namespace kvrimage::svg

#include "kvrimage/picture/svg/document.h"

namespace kvrimage::svg {

namespace {

constexpr const char* style_sheet =
    "text{font:12px \"DejaVu Sans\",Verdana,Arial,sans-serif;fill:#333}"
    ".name{font-size:16px;font-weight:bold;fill:#111}"
    ".middle{text-anchor:middle}.end{text-anchor:end}"
    ".frame{fill:none;stroke:#555}.tick{fill:none;stroke:#555}.grid{fill:none;stroke:#e2e2e2}"
    ".wave{fill:none;stroke:#1b5e9e;stroke-width:1.5;stroke-linejoin:round;stroke-linecap:square}"
    ".envelope{fill:#9cc3e6;stroke:#1b5e9e;stroke-width:.7;stroke-linejoin:round}"
    ".set{fill:#1b5e9e}.run{fill:#8fbfe8}.partly{fill:#e3a02b}.unset{fill:#f3ead3}"
    ".begin{fill:none;stroke:#fff;stroke-width:1.2}"
    ".bits{fill:none;stroke-width:1;shape-rendering:crispEdges}"
    ".none{fill:#fff;stroke:#fff}.low{fill:#c6c6c6;stroke:#c6c6c6}.half{fill:#8c8c8c;stroke:#8c8c8c}"
    ".high{fill:#525252;stroke:#525252}.all{fill:#111;stroke:#111}.care{fill:#d77fae;stroke:#d77fae}"
    ".swatch{stroke:#777;stroke-width:.6}";

/// @p text as it stands between the tags of an XML document or within the quotes of an attribute.
std::string xml_escaped(std::string_view text) {
    std::string result;
    for (const char byte : text) {
        switch (byte) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += byte;
        }
    }
    return result;
}

std::string attributes_of(const box& at) {
    return fmt::format(R"(x="{}" y="{}" width="{}" height="{}")", coordinate(at.left), coordinate(at.top),
                       coordinate(at.width), coordinate(at.height));
}

} // namespace

document::document(double width, double height, std::string_view title) {
    add("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}\" height=\"{1}\" viewBox=\"0 0 {0} {1}\" "
        "role=\"img\">\n",
        coordinate(width), coordinate(height));
    add("<title>{}</title>\n<style>{}</style>\n", xml_escaped(title), style_sheet);
    add("<rect width=\"{}\" height=\"{}\" fill=\"#fff\"/>\n", coordinate(width), coordinate(height));
}

void document::add_box(std::string_view style, const box& at) {
    add("<rect class=\"{}\" {}/>\n", style, attributes_of(at));
}

void document::add_text(std::string_view style, double x, double y, std::string_view words) {
    add("<text class=\"{}\" x=\"{}\" y=\"{}\">{}</text>\n", style, coordinate(x), coordinate(y),
        xml_escaped(words));
}

void document::add_upright_text(double x, double y, std::string_view words) {
    add("<text class=\"middle\" transform=\"translate({} {}) rotate(-90)\">{}</text>\n", coordinate(x),
        coordinate(y), xml_escaped(words));
}

void document::add_path(std::string_view style, std::string_view path) {
    if (!path.empty()) {
        add("<path class=\"{}\" d=\"{}\"/>\n", style, path);
    }
}

void document::begin_cells(std::string_view style, const box& at, double cell_width, double cell_height) {
    add("<svg {}><g class=\"{}\" transform=\"scale({:.6g} {:.6g})translate(0 .5)\">\n", attributes_of(at),
        style, cell_width, cell_height);
}

void document::end_cells() {
    add("</g></svg>\n");
}

void document::add_legend(std::span<const legend_entry> entries, double top) {
    constexpr double swatch_size = 12;
    constexpr double text_offset = swatch_size + 6;
    constexpr double gap = 24;
    constexpr double character_width = 6.2; // on average
    double x = plot_box.left;
    for (const legend_entry& entry : entries) {
        add_box(fmt::format("{} swatch", entry.style), {x, top, swatch_size, swatch_size});
        add_text("legend", x + text_offset, top + swatch_size - 2, entry.text);
        x += text_offset + gap + character_width * static_cast<double>(entry.text.size());
    }
}

std::string document::take() {
    add("</svg>\n");
    return std::move(text);
}

} // namespace kvrimage::svg

#include "tools/kvrmem/plot/plot_svg.h"

#include "tools/kvrmem/plot/plot_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

// The layout, in pixels.
constexpr double picture_width = 960;
constexpr double plot_left = 96;
constexpr double plot_right = 920;
constexpr double plot_top = 64;
constexpr double plot_bottom = 328;
constexpr double value_margin = 6; // between the extreme values and the frame
constexpr double strip_top = 336;
constexpr double strip_height = 14;
constexpr double tick_size = 5;
constexpr double address_labels = 370;
constexpr double address_title = 390;
constexpr double legend_top = 406;
constexpr double legend_line = 20;
constexpr double swatch_size = 12;
constexpr double digit_width = 7;       // of a label, at most
constexpr double character_width = 6.2; // of the legend, on average

constexpr std::size_t longest_name = 80;
constexpr std::uint32_t waveform_columns = 1648; // two a pixel
constexpr std::uint32_t map_columns = 412;       // two pixels each; of the strip, too
constexpr std::uint32_t map_rows = 128;

/// By occupancy, in its order.
constexpr std::array<const char*, 4> strip_classes = {"unset", "partly", "set", "run"};

struct legend_entry {
    const char* style;
    const char* text;
};

constexpr std::array<legend_entry, 4> strip_legend = {
    {{"set", "set, words differ"}, {"run", "run of one word"}, {"partly", "partly set"}, {"unset", "unset"}}};

/// By bit_shade, in its order; the first two are there without being drawn.
constexpr std::array<const char*, 7> shade_classes = {"", "", "low", "half", "high", "all", "care"};

constexpr std::array<legend_entry, 6> shade_legend = {{{"none", "ones: none"},
                                                       {"low", "less than 30 %"},
                                                       {"half", "30 to 70 %"},
                                                       {"high", "more"},
                                                       {"all", "all"},
                                                       {"care", "don't care (half or more)"}}};

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

/// A coordinate: at most two digits behind the point, and none that is not needed.
std::string coordinate(double pixels) {
    std::string text = fmt::format("{:.2f}", pixels);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

class svg_picture {
public:
    explicit svg_picture(const plot_picture& drawn) : picture(drawn) {}

    [[nodiscard]] std::string draw() {
        open();
        add_titles();
        if (picture.bits) {
            add_bit_map();
        } else {
            add_waveform();
        }
        add_strip();
        add_addresses();
        add_legends();
        text += "</svg>\n";
        return text;
    }

private:
    template <class... Values>
    void add(fmt::format_string<Values...> form, Values&&... values) {
        fmt::format_to(std::back_inserter(text), form, std::forward<Values>(values)...);
    }
    /// Where the word at @p address begins; fractions are within the word.
    [[nodiscard]] double x_of(double address) const {
        return plot_left + (address - picture.grid.range().first) * (plot_right - plot_left) /
                               static_cast<double>(picture.grid.words());
    }
    [[nodiscard]] std::string column_begin(const address_grid& grid, std::uint32_t column) const {
        return coordinate(x_of(static_cast<double>(grid.first_of(column))));
    }
    [[nodiscard]] std::string column_end(const address_grid& grid, std::uint32_t column) const {
        return coordinate(x_of(static_cast<double>(grid.last_of(column)) + 1));
    }

    void open() {
        const double height = legend_top + legend_line * (picture.bits ? 2 : 1) + 6;
        add("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}\" height=\"{1}\" "
            "viewBox=\"0 0 {0} {1}\" role=\"img\">\n",
            coordinate(picture_width), coordinate(height));
        add("<title>{}: {}</title>\n<style>{}</style>\n", xml_escaped(picture.name),
            xml_escaped(picture.title), style_sheet);
        add("<rect width=\"{}\" height=\"{}\" fill=\"#fff\"/>\n", coordinate(picture_width),
            coordinate(height));
    }
    void add_text(const char* style, double x, double y, std::string_view words) {
        add("<text class=\"{}\" x=\"{}\" y=\"{}\">{}</text>\n", style, coordinate(x), coordinate(y),
            xml_escaped(words));
    }
    void add_titles() {
        add_text("name", plot_left, 28, shortened(picture.name, longest_name, "…"));
        std::string title = picture.title;
        const std::string note = note_on(picture);
        if (!note.empty()) {
            title += "; " + note;
        }
        add_text("title", plot_left, 48, title);
        add("<text class=\"middle\" transform=\"translate(20 {}) rotate(-90)\">{}</text>\n",
            coordinate((plot_top + plot_bottom) / 2), xml_escaped(vertical_title(picture)));
    }
    void add_frame() {
        add("<rect class=\"frame\" x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\"/>\n", coordinate(plot_left),
            coordinate(plot_top), coordinate(plot_right - plot_left), coordinate(plot_bottom - plot_top));
    }
    /// A label on the left, with its tick and, where the picture has such, a line across.
    void add_vertical_tick(double y, std::string_view label, bool has_grid_line) {
        if (has_grid_line) {
            add("<path class=\"grid\" d=\"M{} {}H{}\"/>\n", coordinate(plot_left), coordinate(y),
                coordinate(plot_right));
        }
        add("<path class=\"tick\" d=\"M{} {}h-{}\"/>\n", coordinate(plot_left), coordinate(y),
            coordinate(tick_size));
        constexpr double half_a_digit = 4;
        add_text("end value", plot_left - tick_size - 4, y + half_a_digit, label);
    }
    [[nodiscard]] std::vector<address_tick> ticks() const {
        constexpr double gap = 24;
        const double label = static_cast<double>(address_label_size(picture.grid.range())) * digit_width;
        return address_ticks(picture.grid.range(), (label + gap) * static_cast<double>(picture.grid.words()) /
                                                       (plot_right - plot_left));
    }
    /// Ticks stand in the middle of their words.
    [[nodiscard]] std::string x_of_tick(const address_tick& tick) const {
        return coordinate(x_of(static_cast<double>(tick.address) + 0.5));
    }

    void add_waveform() {
        constexpr std::uint32_t most_ticks = 8;
        const value_axis axis = axis_of(picture);
        const auto y_of = [&axis](std::uint64_t key) {
            return plot_bottom - value_margin -
                   axis.position_of(key) * (plot_bottom - plot_top - 2 * value_margin);
        };
        for (const address_tick& tick : ticks()) {
            add("<path class=\"grid\" d=\"M{} {}V{}\"/>\n", x_of_tick(tick), coordinate(plot_top),
                coordinate(plot_bottom));
        }
        for (const value_tick& tick : ticks_of(picture.order, axis, most_ticks)) {
            add_vertical_tick(y_of(tick.key), tick.label, true);
        }
        add_frame();
        add_curves(y_of);
    }
    /// Each stretch of columns with values: a line where all of them have one value, else an area.
    template <class Height>
    void add_curves(const Height& y_of) {
        std::string lines;
        std::string areas;
        const auto& columns = picture.waveform->columns();
        for (std::uint32_t column = 0; column < columns.size();) {
            std::uint32_t end = column;
            bool is_line = true;
            for (; end < columns.size() && columns[end]; ++end) {
                is_line = is_line && columns[end]->lowest == columns[end]->highest;
            }
            if (end > column) {
                (is_line ? lines : areas) +=
                    is_line ? greatest_values(column, end, y_of) : envelope(column, end, y_of);
            }
            column = std::max(end, column + 1);
        }
        add_path("envelope", areas);
        add_path("wave", lines);
    }
    void add_path(const char* style, std::string_view path) {
        if (!path.empty()) {
            add("<path class=\"{}\" d=\"{}\"/>\n", style, path);
        }
    }
    /// The steps from column to column.
    template <class Height>
    [[nodiscard]] std::string greatest_values(std::uint32_t begin, std::uint32_t end,
                                              const Height& y_of) const {
        std::string path;
        std::string before;
        for (std::uint32_t column = begin; column < end; ++column) {
            const std::string y = coordinate(y_of(picture.waveform->columns()[column]->highest));
            if (y != before) {
                const bool is_first = column == begin;
                path += fmt::format("{}{}{}{}", is_first ? "M" : "H", column_begin(picture.grid, column),
                                    is_first ? " " : "V", y);
            }
            before = y;
        }
        return path + "H" + column_end(picture.grid, end - 1);
    }
    /// Along the greatest values and back along the least.
    template <class Height>
    [[nodiscard]] std::string envelope(std::uint32_t begin, std::uint32_t end, const Height& y_of) const {
        std::string path = greatest_values(begin, end, y_of);
        std::string before;
        for (std::uint32_t column = end; column-- > begin;) {
            const std::string y = coordinate(y_of(picture.waveform->columns()[column]->lowest));
            if (y != before) {
                if (column + 1 < end) {
                    path += 'H' + column_end(picture.grid, column);
                }
                path += "V" + y;
            }
            before = y;
        }
        return path + "H" + column_begin(picture.grid, begin) + "Z";
    }

    void add_bit_map() {
        add_unset_columns();
        // In the map's own units a cell is one wide and one high.
        const std::uint32_t columns = picture.grid.columns();
        const double cell_width =
            x_of(static_cast<double>(picture.grid.first_of(0) + picture.grid.words_a_column())) - plot_left;
        const double cell_height = (plot_bottom - plot_top) / picture.bits->rows();
        add("<svg x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\"><g class=\"bits\" transform=\"scale({:.6g} "
            "{:.6g})translate(0 .5)\">\n",
            coordinate(plot_left), coordinate(plot_top), coordinate(plot_right - plot_left),
            coordinate(plot_bottom - plot_top), cell_width, cell_height);
        for (std::size_t shade = static_cast<std::size_t>(bit_shade::low); shade < shade_classes.size();
             ++shade) {
            add_path(shade_classes[shade], cells_of(static_cast<bit_shade>(shade), columns));
        }
        add("</g></svg>\n");
        constexpr std::uint32_t most_ticks = 9;
        for (const std::uint32_t bit : bit_ticks(picture.order.width(), most_ticks)) {
            const double row = picture.bits->row_of(bit) + 0.5;
            add_vertical_tick(plot_bottom - row * cell_height, fmt::format("{}", bit), false);
        }
        add_frame();
    }
    /// Strokes along the rows, from the highest row down, for the cells of one shade.
    [[nodiscard]] std::string cells_of(bit_shade shade, std::uint32_t columns) const {
        std::string path;
        for (std::uint32_t line = 0; line < picture.bits->rows(); ++line) {
            const std::uint32_t row = picture.bits->rows() - 1 - line;
            char move = 'M'; // the row's first stroke is placed from the corner, the others from the last
            std::uint32_t pen = 0;
            for (std::uint32_t column = 0; column < columns;) {
                std::uint32_t end = column;
                while (end < columns && picture.bits->shade(row, end) == shade) {
                    ++end;
                }
                if (end > column) {
                    path +=
                        fmt::format("{}{} {}h{}", move, column - pen, move == 'M' ? line : 0, end - column);
                    move = 'm';
                    pen = end;
                }
                column = std::max(end, column + 1);
            }
        }
        return path;
    }
    void add_unset_columns() {
        std::string path;
        each_stretch([this, &path](occupancy state, std::uint32_t begin, std::uint32_t end) {
            if (state == occupancy::unset) {
                path += box(begin, end, plot_top, plot_bottom - plot_top);
            }
        });
        add_path("unset", path);
    }

    /// Neighbouring columns of one state, from the first to the last (exclusive).
    template <class Visit>
    void each_stretch(const Visit& visit) const {
        const auto& columns = picture.strip.columns();
        for (std::uint32_t begin = 0; begin < columns.size();) {
            std::uint32_t end = begin;
            while (end < columns.size() && columns[end].state() == columns[begin].state()) {
                ++end;
            }
            visit(columns[begin].state(), begin, end);
            begin = end;
        }
    }
    /// The columns from @p begin to @p end (exclusive) of the strip's grid.
    [[nodiscard]] std::string box(std::uint32_t begin, std::uint32_t end, double top, double height) const {
        const address_grid& grid = picture.strip.addresses();
        return fmt::format("M{} {}H{}v{}H{}z", column_begin(grid, begin), coordinate(top),
                           column_end(grid, end - 1), coordinate(height), column_begin(grid, begin));
    }
    void add_strip() {
        add("<rect class=\"frame\" x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\"/>\n", coordinate(plot_left),
            coordinate(strip_top), coordinate(plot_right - plot_left), coordinate(strip_height));
        std::array<std::string, strip_classes.size()> paths;
        each_stretch([this, &paths](occupancy state, std::uint32_t begin, std::uint32_t end) {
            paths[static_cast<std::size_t>(state)] += box(begin, end, strip_top, strip_height);
        });
        for (std::size_t state = 0; state < paths.size(); ++state) {
            add_path(strip_classes[state], paths[state]);
        }
        add_run_begins();
    }
    /// A line between two runs side by side.
    void add_run_begins() {
        const auto& columns = picture.strip.columns();
        std::string path;
        for (std::uint32_t column = 1; column < columns.size(); ++column) {
            if (columns[column].begins_run && columns[column - 1].state() == occupancy::run) {
                path += fmt::format("M{} {}v{}", column_begin(picture.strip.addresses(), column),
                                    coordinate(strip_top), coordinate(strip_height));
            }
        }
        add_path("begin", path);
    }
    void add_addresses() {
        for (const address_tick& tick : ticks()) {
            const std::string x = x_of_tick(tick);
            add("<path class=\"tick\" d=\"M{} {}v{}\"/>\n", x, coordinate(strip_top + strip_height),
                coordinate(tick_size));
            add("<text class=\"middle address\" x=\"{}\" y=\"{}\">{}</text>\n", x, coordinate(address_labels),
                tick.label);
        }
        add_text("middle", (plot_left + plot_right) / 2, address_title, "address (words)");
    }
    template <std::size_t size>
    void add_legend(const std::array<legend_entry, size>& entries, double top) {
        double x = plot_left;
        for (const legend_entry& entry : entries) {
            add("<rect class=\"{} swatch\" x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\"/>\n", entry.style,
                coordinate(x), coordinate(top), coordinate(swatch_size), coordinate(swatch_size));
            add_text("legend", x + swatch_size + 6, top + swatch_size - 2, entry.text);
            x += swatch_size + 6 + 24 +
                 character_width * static_cast<double>(std::string_view(entry.text).size());
        }
    }
    void add_legends() {
        add_legend(strip_legend, legend_top);
        if (picture.bits) {
            add_legend(shade_legend, legend_top + legend_line);
        }
    }

    const plot_picture& picture;
    std::string text;
};

} // namespace

picture_size size_for_svg(std::uint32_t width) noexcept {
    return {width > widest_plotted_value ? map_columns : waveform_columns, map_rows, map_columns};
}

std::string draw_as_svg(const plot_picture& picture) {
    return svg_picture(picture).draw();
}

} // namespace kvrmem

#include "tools/kvrmem/plot/plot_terminal.h"

#include "tools/kvrmem/plot/plot_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::size_t axis_size = 2;  // "┤" and the blank before it
constexpr std::size_t label_room = 8; // where the labels of the words' width need less

/// What the picture is drawn with.
struct character_set {
    std::array<std::string_view, 9> eighths; ///< of a cell filled from below: none to all
    std::string_view between;                ///< least and greatest value of a column
    std::array<std::string_view, 4> strip;   ///< by occupancy
    std::string_view run_begin;
    std::array<std::string_view, 7> shades; ///< by bit_shade
    std::string_view side;
    std::string_view side_tick;
    std::string_view corner;
    std::string_view floor;
    std::string_view floor_tick;
    std::string_view ellipsis;
};

constexpr character_set blocks = {{" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"},
                                  "▒",
                                  {"·", "▒", "█", "━"},
                                  "┣",
                                  {"·", " ", "░", "▒", "▓", "█", "x"},
                                  "│",
                                  "┤",
                                  "└",
                                  "─",
                                  "┬",
                                  "…"};

constexpr character_set ascii = {{" ", ".", ".", ".", ":", ":", ":", "#", "#"},
                                 "|",
                                 {".", "+", "#", "="},
                                 "[",
                                 {".", " ", "-", "+", "*", "#", "x"},
                                 "|",
                                 "+",
                                 "+",
                                 "-",
                                 "+",
                                 "..."};

constexpr std::array<style, 4> strip_styles = {style::dim, style::yellow, style::green, style::cyan};

/// A line under construction: characters of one style are painted together.
class painted_line {
public:
    explicit painted_line(const painter& colors) : paint(colors) {}
    void add(style how, std::string_view text) {
        if (how != current) {
            flush();
            current = how;
        }
        pending += text;
    }
    /// The line, without blanks at its end, with a line break.
    [[nodiscard]] std::string take() {
        pending.erase(pending.find_last_not_of(' ') + 1);
        flush();
        if (!paint.colored()) {
            line.erase(line.find_last_not_of(' ') + 1);
        }
        return line + "\n";
    }

private:
    void flush() {
        if (!pending.empty()) {
            line += paint.paint(current, pending);
            pending.clear();
        }
    }

    const painter& paint;
    style current = style::plain;
    std::string pending;
    std::string line;
};

/// Characters of the labels beside words of @p width bits.
std::size_t label_size_for(std::uint32_t width) {
    if (width > widest_plotted_value) {
        return label_room;
    }
    // No label is longer than the least signed value.
    return std::max(label_room, value_order(width, true).text_of(0).size());
}

/// The text of each row's label, "" for a row without one.
using row_labels = std::array<std::string, screen_rows>;

/// Fills in the rows of a waveform, counted from below. Heights are eighths of a row, 1 for the lowest value.
class waveform_rows {
public:
    waveform_rows(const plot_picture& drawn, const character_set& characters)
        : picture(drawn),
          glyphs(characters),
          axis(axis_of(drawn)) {}

    void add_cell(painted_line& line, std::uint32_t row, std::uint32_t column, std::uint32_t repeat) const {
        const auto& bounds = picture.waveform->columns()[column];
        const std::uint32_t floor = row * eighths_a_row;
        const std::uint32_t top = bounds ? height_of(bounds->highest) : 0;
        const std::uint32_t solid = bounds ? height_of(bounds->lowest) : 0;
        const std::uint32_t filled = std::clamp(top, floor, floor + eighths_a_row) - floor;
        const bool is_between = filled == eighths_a_row && solid < floor + eighths_a_row / 2;
        for (std::uint32_t count = 0; count < repeat; ++count) {
            line.add(is_between ? style::cyan : style::blue,
                     is_between ? glyphs.between : glyphs.eighths[filled]);
        }
    }
    [[nodiscard]] row_labels labels() const {
        constexpr std::uint32_t most_ticks = 5;
        row_labels labels;
        for (const value_tick& tick : ticks_of(picture.order, axis, most_ticks)) {
            labels[(height_of(tick.key) - 1) / eighths_a_row] = tick.label;
        }
        // The ends are exact, and no other label is beside them.
        labels[1].clear();
        labels[screen_rows - 2].clear();
        labels.front() = picture.order.text_of(axis.lowest);
        labels.back() = picture.order.text_of(axis.highest);
        return labels;
    }

private:
    static constexpr std::uint32_t eighths_a_row = 8;

    [[nodiscard]] std::uint32_t height_of(std::uint64_t key) const {
        constexpr double highest = screen_rows * eighths_a_row - 1;
        return 1 + static_cast<std::uint32_t>(std::lround(axis.position_of(key) * highest));
    }

    const plot_picture& picture;
    const character_set& glyphs;
    value_axis axis;
};

/// Fills in the rows of a bit map, counted from below.
class bit_rows {
public:
    bit_rows(const plot_picture& drawn, const character_set& characters)
        : picture(drawn),
          glyphs(characters) {}

    void add_cell(painted_line& line, std::uint32_t row, std::uint32_t column, std::uint32_t repeat) const {
        const bit_shade shade = picture.bits->shade(row, column);
        const style how = shade == bit_shade::unset       ? style::dim
                          : shade == bit_shade::dont_care ? style::magenta
                                                          : style::blue;
        for (std::uint32_t count = 0; count < repeat; ++count) {
            line.add(how, glyphs.shades[static_cast<std::size_t>(shade)]);
        }
    }
    [[nodiscard]] row_labels labels() const {
        constexpr std::uint32_t most_ticks = screen_rows / 2;
        const std::uint32_t width = picture.order.width();
        row_labels labels;
        for (const std::uint32_t bit : bit_ticks(width, most_ticks)) {
            labels[picture.bits->row_of(bit)] = fmt::format("{}", bit);
        }
        labels[screen_rows - 2].clear();
        labels.back() = fmt::format("{}", width - 1);
        return labels;
    }

private:
    const plot_picture& picture;
    const character_set& glyphs;
};

class character_picture {
public:
    character_picture(const plot_picture& drawn, const character_screen& shown_on)
        : picture(drawn),
          screen(shown_on),
          glyphs(screen.has_blocks ? blocks : ascii),
          label_size(label_size_for(picture.order.width())),
          room(size_for_screen(screen.columns, picture.order.width()).most_columns),
          repeat(std::max(1U, room / picture.grid.columns())) {}

    [[nodiscard]] std::string draw() {
        add_titles();
        if (picture.bits) {
            add_rows(bit_rows(picture, glyphs));
        } else {
            add_rows(waveform_rows(picture, glyphs));
        }
        add_strip();
        add_addresses();
        add_legend();
        return text;
    }

private:
    void add_titles() {
        const std::size_t room_for_name =
            screen.columns - std::min<std::size_t>(screen.columns / 2, picture.title.size() + 2);
        const std::string name = screen.has_blocks ? picture.name : in_ascii(picture.name);
        painted_line line(screen.paint);
        line.add(style::bold, shortened(name, room_for_name, glyphs.ellipsis));
        line.add(style::plain, "  " + picture.title);
        text += line.take();
        add_dim(fmt::format("{} over address (words){}", vertical_title(picture), scale_note()));
        const std::string note = note_on(picture);
        if (!note.empty()) {
            add_dim(note);
        }
        text += "\n";
    }
    [[nodiscard]] std::string scale_note() const {
        const std::uint64_t words = picture.grid.words_a_column();
        if (words > 1) {
            return fmt::format(", {} words a character", words);
        }
        if (repeat > 1) {
            return fmt::format(", {} characters a word", repeat);
        }
        return "";
    }
    void add_dim(std::string_view words) {
        painted_line line(screen.paint);
        line.add(style::dim, words);
        text += line.take();
    }
    template <class Rows>
    void add_rows(const Rows& rows) {
        const row_labels labels = rows.labels();
        for (std::uint32_t row = screen_rows; row-- > 0;) {
            painted_line line(screen.paint);
            line.add(style::dim, fmt::format("{:>{}} {}", labels[row], label_size,
                                             labels[row].empty() ? glyphs.side : glyphs.side_tick));
            for (std::uint32_t column = 0; column < picture.grid.columns(); ++column) {
                rows.add_cell(line, row, column, repeat);
            }
            text += line.take();
        }
    }
    void add_strip() {
        painted_line line(screen.paint);
        line.add(style::dim, fmt::format("{:>{}} {}", "words", label_size, glyphs.side));
        for (const word_column& column : picture.strip.columns()) {
            const auto state = static_cast<std::size_t>(column.state());
            line.add(strip_styles[state], column.begins_run ? glyphs.run_begin : glyphs.strip[state]);
            for (std::uint32_t count = 1; count < repeat; ++count) {
                line.add(strip_styles[state], glyphs.strip[state]);
            }
        }
        text += line.take();
    }
    void add_addresses() {
        const std::size_t label = address_label_size(picture.grid.range());
        const double characters_a_word = repeat / static_cast<double>(picture.grid.words_a_column());
        std::vector<std::string_view> marks(std::size_t{picture.grid.columns()} * repeat, glyphs.floor);
        std::string labels(screen.columns, ' ');
        for (const address_tick& tick :
             address_ticks(picture.grid.range(), static_cast<double>(label + 2) / characters_a_word)) {
            const std::size_t at =
                std::size_t{picture.grid.column_of(tick.address)} * repeat + (repeat - 1) / 2;
            const std::size_t begin =
                label_size + axis_size + at - (label - 1) / 2; // the margin has room for half
            marks[at] = glyphs.floor_tick;
            if (begin + label <= labels.size()) {
                labels.replace(begin, label, tick.label);
            }
        }
        painted_line line(screen.paint);
        line.add(style::dim, fmt::format("{:{}} {}", "", label_size, glyphs.corner));
        for (const std::string_view mark : marks) {
            line.add(style::dim, mark);
        }
        text += line.take();
        add_dim(labels);
    }
    void add_legend() {
        painted_line line(screen.paint);
        line.add(style::plain, std::string(label_size + axis_size, ' '));
        add_entry(line, occupancy::set, "set");
        line.add(style::plain, "  ");
        line.add(strip_styles[static_cast<std::size_t>(occupancy::run)], glyphs.run_begin);
        add_entry(line, occupancy::run, "run of one word");
        line.add(style::plain, "  ");
        add_entry(line, occupancy::partly_set, "partly set");
        line.add(style::plain, "  ");
        add_entry(line, occupancy::unset, "unset");
        text += line.take();
        if (picture.bits) {
            add_bit_legend();
        }
    }
    void add_entry(painted_line& line, occupancy state, std::string_view meaning) {
        const auto index = static_cast<std::size_t>(state);
        line.add(strip_styles[index], glyphs.strip[index]);
        line.add(style::plain, fmt::format(" {}", meaning));
    }
    void add_bit_legend() {
        const auto glyph = [this](bit_shade shade) { return glyphs.shades[static_cast<std::size_t>(shade)]; };
        painted_line line(screen.paint);
        line.add(style::plain,
                 fmt::format("{:{}}ones: '{}' none  {}{}{} some  {} all   {} don't care", "",
                             label_size + axis_size, glyph(bit_shade::none), glyph(bit_shade::low),
                             glyph(bit_shade::half), glyph(bit_shade::high), glyph(bit_shade::all),
                             glyph(bit_shade::dont_care)));
        text += line.take();
    }

    const plot_picture& picture;
    const character_screen& screen;
    const character_set& glyphs;
    std::size_t label_size;
    std::uint32_t room;
    std::uint32_t repeat;
    std::string text;
};

} // namespace

picture_size size_for_screen(std::uint32_t screen_columns, std::uint32_t width) {
    const auto columns = screen_columns - static_cast<std::uint32_t>(label_size_for(width) + axis_size);
    return {columns, screen_rows, columns};
}

std::string draw_in_characters(const plot_picture& picture, const character_screen& screen) {
    return character_picture(picture, screen).draw();
}

} // namespace kvrmem

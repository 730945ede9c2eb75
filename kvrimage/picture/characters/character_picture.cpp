#include "kvrimage/picture/characters/character_picture.h"

#include "kvrimage/picture/characters/glyphs.h"
#include "kvrimage/picture/characters/plot_rows.h"
#include "kvrimage/picture/characters/styled_lines.h"
#include "kvrimage/picture/shown_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <variant>
#include <vector>

namespace kvrimage::characters {

namespace {

constexpr std::size_t axis_size = 2;  // "┤" and the blank before it
constexpr std::size_t label_room = 8; // where the labels of the words' width need less

/// Characters of the labels beside words of @p width bits.
std::size_t label_size_for(std::uint32_t width) {
    if (width > widest_waveform) {
        return label_room;
    }
    // No label is longer than the least signed value.
    return std::max(label_room, value_order(width, true).text_of(0).size());
}

character_style style_of(occupancy state) {
    constexpr std::array styles = {character_style::faint, character_style::partly_set, character_style::set,
                                   character_style::same};
    return styles[static_cast<std::size_t>(state)];
}

class character_picture {
public:
    character_picture(const picture_contents& drawn, std::uint32_t width, const character_screen& shown_on)
        : contents(drawn),
          screen(shown_on),
          glyphs(screen.has_blocks ? block_glyphs : ascii_glyphs),
          lines(screen.paint),
          label_size(label_size_for(width)),
          repeat(std::max(1U, size_for(screen.columns, width).most_columns / contents.grid.columns())) {}

    [[nodiscard]] std::string draw() {
        const auto* map = std::get_if<bit_map>(&contents.words);
        add_titles();
        if (map != nullptr) {
            add_rows(bit_rows(*map, glyphs));
        } else {
            add_rows(waveform_rows(std::get<waveform>(contents.words), glyphs));
        }
        add_strip();
        add_addresses();
        add_legend();
        if (map != nullptr) {
            add_bit_legend();
        }
        return lines.take();
    }

private:
    void add_titles() {
        if (!contents.name.empty()) {
            lines.add(character_style::name, shown_name());
            lines.add(character_style::plain, "  ");
        }
        lines.add_line(character_style::plain, contents.title);
        add_faint_line(fmt::format("{} over address (words){}", contents.vertical_title, scale_note()));
        if (!contents.note.empty()) {
            add_faint_line(contents.note);
        }
        add_faint_line("");
    }
    /// The name, cut to what the title leaves of the line, but to no less than half of it.
    [[nodiscard]] std::string shown_name() const {
        const std::size_t room =
            screen.columns - std::min<std::size_t>(screen.columns / 2, contents.title.size() + 2);
        return shortened(screen.has_blocks ? contents.name : in_ascii(contents.name), room, glyphs.ellipsis);
    }
    [[nodiscard]] std::string scale_note() const {
        const std::uint64_t words = contents.grid.words_a_column();
        if (words > 1) {
            return fmt::format(", {} words a character", words);
        }
        return repeat > 1 ? fmt::format(", {} characters a word", repeat) : "";
    }
    void add_faint_line(std::string_view text) { lines.add_line(character_style::faint, text); }
    void add_cell(const cell& shown, std::uint32_t count) {
        for (; count > 0; --count) {
            lines.add(shown.style, shown.glyph);
        }
    }
    void add_side(std::string_view label, std::string_view side) {
        lines.add(character_style::faint, fmt::format("{:>{}} {}", label, label_size, side));
    }

    template <class Rows>
    void add_rows(const Rows& rows) {
        const row_labels labels = rows.labels();
        for (std::uint32_t row = plot_rows; row-- > 0;) {
            add_side(labels[row], labels[row].empty() ? glyphs.side : glyphs.side_tick);
            for (std::uint32_t column = 0; column < contents.grid.columns(); ++column) {
                add_cell(rows.at(row, column), repeat);
            }
            lines.end_line();
        }
    }
    void add_strip() {
        add_side("words", glyphs.side);
        for (const word_column& column : contents.strip.columns()) {
            const occupancy state = column.state();
            add_cell({style_of(state), column.begins_run ? glyphs.run_begin : glyphs.of(state)}, 1);
            add_cell({style_of(state), glyphs.of(state)}, repeat - 1);
        }
        lines.end_line();
    }
    void add_addresses() {
        const std::size_t size = contents.addresses.label_size();
        const double characters_a_word = repeat / static_cast<double>(contents.grid.words_a_column());
        std::vector<std::string_view> marks(std::size_t{contents.grid.columns()} * repeat, glyphs.floor);
        std::string labels(screen.columns, ' ');
        for (const address_tick& tick :
             contents.addresses.ticks(static_cast<double>(size + 2) / characters_a_word)) {
            const std::size_t at =
                std::size_t{contents.grid.column_of(tick.offset)} * repeat + (repeat - 1) / 2;
            const std::size_t begin =
                label_size + axis_size + at - (size - 1) / 2; // the margin has room for half
            marks[at] = glyphs.floor_tick;
            if (begin + size <= labels.size()) {
                labels.replace(begin, size, tick.label);
            }
        }
        add_floor(marks);
        add_faint_line(labels);
    }
    void add_floor(const std::vector<std::string_view>& marks) {
        add_side("", glyphs.corner);
        for (const std::string_view mark : marks) {
            lines.add(character_style::faint, mark);
        }
        lines.end_line();
    }

    void add_legend() {
        lines.add(character_style::plain, std::string(label_size + axis_size, ' '));
        add_entry(occupancy::set, "set  ");
        add_cell({style_of(occupancy::run), glyphs.run_begin}, 1);
        add_entry(occupancy::run, "run of one word  ");
        add_entry(occupancy::partly_set, "partly set  ");
        add_entry(occupancy::unset, "unset");
        lines.end_line();
    }
    void add_entry(occupancy state, std::string_view meaning) {
        add_cell({style_of(state), glyphs.of(state)}, 1);
        lines.add(character_style::plain, fmt::format(" {}", meaning));
    }
    void add_bit_legend() {
        lines.add_line(character_style::plain,
                       fmt::format("{:{}}ones: '{}' none  {}{}{} some  {} all   {} don't care", "",
                                   label_size + axis_size, glyphs.of(bit_shade::none),
                                   glyphs.of(bit_shade::low), glyphs.of(bit_shade::half),
                                   glyphs.of(bit_shade::high), glyphs.of(bit_shade::all),
                                   glyphs.of(bit_shade::dont_care)));
    }

    const picture_contents& contents;
    const character_screen& screen;
    const glyph_set& glyphs;
    styled_lines lines;
    std::size_t label_size;
    std::uint32_t repeat; ///< characters a column
};

} // namespace

picture_size size_for(std::uint32_t screen_columns, std::uint32_t width) {
    const auto columns = screen_columns - static_cast<std::uint32_t>(label_size_for(width) + axis_size);
    return {columns, plot_rows, columns};
}

std::string draw(const picture_contents& contents, std::uint32_t width, const character_screen& screen) {
    return character_picture(contents, width, screen).draw();
}

} // namespace kvrimage::characters

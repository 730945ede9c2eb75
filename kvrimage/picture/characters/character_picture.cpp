#include "kvrimage/picture/characters/character_picture.h"

#include "kvrimage/picture/characters/glyphs.h"
#include "kvrimage/picture/characters/plot_rows.h"
#include "kvrimage/picture/characters/styled_lines.h"
#include "kvrimage/picture/shown_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cmath>
#include <functional>
#include <variant>
#include <vector>

namespace kvrimage::characters {

namespace {

constexpr std::size_t axis_size = 2; // "┤" and the blank before it

struct occupancy_look {
    character_style style;
    meaning means;
};

/// By occupancy.
constexpr std::array<occupancy_look, 5> occupancy_looks = {
    {{character_style::faint, meaning::unset},
     {character_style::partly_set, meaning::partly_set},
     {character_style::set, meaning::set},
     {character_style::same, meaning::run},
     {character_style::dont_care, meaning::dont_care}}};

/// By meaning.
constexpr std::array<std::string_view, meanings> legend_texts = {
    "",    "value", "below zero",      "least to greatest", "part of the words", "no ones", "some",
    "all", "set",   "run of one word", "partly set",        "don't care",        "unset",   "left out"};

/// Characters as which @p text, valid UTF-8, is shown.
std::size_t shown_size(std::string_view text) {
    return in_ascii(text).size();
}

class character_picture {
public:
    character_picture(const picture_contents& drawn, std::uint32_t rows, const character_screen& shown_on)
        : contents(drawn),
          screen(shown_on),
          glyphs(screen.has_blocks ? block_glyphs : ascii_glyphs),
          lines(screen.paint),
          most_rows(rows),
          label_size(label_size_of(drawn)) {}

    [[nodiscard]] std::string draw() {
        add_titles();
        if (const auto* const map = std::get_if<bit_map>(&contents.words)) {
            add_rows(bit_rows(*map, glyphs));
        } else if (const auto* const differences = std::get_if<difference_map>(&contents.words)) {
            add_rows(difference_rows(*differences, glyphs, most_rows));
        } else {
            add_rows(waveform_rows(std::get<waveform>(contents.words), glyphs, most_rows));
        }
        add_strip();
        add_addresses();
        add_legend();
        return lines.take();
    }

private:
    using part = column_grid::part;

    static std::size_t label_size_of(const picture_contents& drawn) {
        const auto* const wave = std::get_if<waveform>(&drawn.words);
        return wave != nullptr ? label_size_for(wave->order()) : usual_label_size;
    }

    void add_titles() {
        if (!contents.name.empty()) {
            lines.add(character_style::name, shown_name());
            lines.add(character_style::plain, "  ");
        }
        lines.add_line(character_style::plain, contents.title);
        add_faint_line(fmt::format("{} over address (words){}", contents.vertical_title, scale_note()));
        for (const std::string& note : contents.notes) {
            add_faint_line(note);
        }
        add_faint_line("");
    }
    /// The name, cut to what the title leaves of the line, but to no less than half of it.
    [[nodiscard]] std::string shown_name() const {
        const std::size_t room =
            screen.columns - std::min<std::size_t>(screen.columns / 2, contents.title.size() + 2);
        return shortened(screen.has_blocks ? contents.name : in_ascii(contents.name), room, glyphs.ellipsis);
    }
    /// Of a picture of several stretches, each has a scale of its own.
    [[nodiscard]] std::string scale_note() const {
        const part& first = contents.grid.parts().front();
        if (contents.grid.parts().size() > 1) {
            return "";
        }
        if (first.words_a_column > 1) {
            return fmt::format(", {} words a character", first.words_a_column);
        }
        return repeat_of(first) > 1 ? fmt::format(", {} characters a word", repeat_of(first)) : "";
    }
    /// Characters a column.
    [[nodiscard]] static std::uint32_t repeat_of(const part& of) { return of.room / of.columns(); }

    void add_faint_line(std::string_view text) { lines.add_line(character_style::faint, text); }
    void add_cell(const cell& shown, std::uint32_t count) {
        for (; count > 0; --count) {
            lines.add(shown.style, shown.glyph);
            occurs.set(static_cast<std::size_t>(shown.means));
        }
    }
    void add_side(std::string_view label, std::string_view side) {
        lines.add(character_style::faint, fmt::format("{:>{}} {}", label, label_size, side));
    }

    /// A break of @p wide columns, with @p mark in the last but one.
    void add_break(const cell& mark, const cell& beside, std::uint32_t wide) {
        add_cell(beside, wide - 2);
        add_cell(mark, 1);
        add_cell(beside, 1);
    }
    /// Calls @p add_part with each stretch; between them there is a break, with @p mark in its middle.
    void add_parts(const cell& mark, const cell& beside, const std::function<void(const part&)>& add_part) {
        std::uint32_t at = 0;
        for (const part& of : contents.grid.parts()) {
            if (of.begin != 0) {
                add_break(mark, beside, of.begin - at);
            }
            add_part(of);
            at = of.begin + repeat_of(of) * of.columns();
        }
        lines.end_line();
    }

    template <class Rows>
    void add_rows(const Rows& rows) {
        const row_labels labels = rows.labels();
        for (std::uint32_t row = rows.rows(); row-- > 0;) {
            add_side(labels[row], labels[row].empty() ? glyphs.side : glyphs.side_tick);
            add_parts(break_mark(), blank, [&](const part& of) {
                for (std::uint32_t column = 0; column < of.columns(); ++column) {
                    add_cell(rows.at(row, of.first_column + column), repeat_of(of));
                }
            });
        }
    }
    [[nodiscard]] cell break_mark() const {
        return {character_style::faint, glyphs.left_out, meaning::left_out};
    }

    void add_strip() {
        add_side("words", glyphs.side);
        add_parts(break_mark(), blank, [this](const part& of) {
            for (std::uint32_t column = 0; column < of.columns(); ++column) {
                add_occupancy(contents.strip.columns()[of.first_column + column], repeat_of(of));
            }
        });
    }
    void add_occupancy(const word_column& column, std::uint32_t repeat) {
        const occupancy state = column.state();
        const occupancy_look& look = occupancy_looks[static_cast<std::size_t>(state)];
        const bool is_begin = state == occupancy::run && column.begins_run;
        add_cell({look.style, is_begin ? glyphs.run_begin : glyphs.of(state), look.means}, 1);
        add_cell({look.style, glyphs.of(state), look.means}, repeat - 1);
    }

    [[nodiscard]] double middle_of(std::uint64_t offset) const {
        const std::uint32_t column = contents.grid.column_of(offset);
        const part& of = contents.grid.part_of_column(column);
        const std::uint32_t repeat = repeat_of(of);
        return static_cast<double>(label_size + axis_size) + of.begin + (column - of.first_column) * repeat +
               (repeat - 1) / 2 + 0.5;
    }
    void add_addresses() {
        const auto left = static_cast<double>(label_size + axis_size);
        const axis_scale scale{[this](std::uint64_t offset) { return middle_of(offset); },
                               left,
                               1,
                               static_cast<double>(contents.addresses.label_size()),
                               2,
                               0,
                               static_cast<double>(screen.columns)};
        const std::vector<address_label> labels = contents.addresses.labels(scale);
        add_floor(labels);
        std::vector<std::string> texts(1 + std::ranges::max(labels, {}, &address_label::line).line,
                                       std::string(screen.columns, ' '));
        for (const address_label& label : labels) {
            const auto begin = static_cast<std::size_t>(std::ceil(label.begin));
            texts[label.line].replace(begin, label.text.size(), label.text);
        }
        for (const std::string& text : texts) {
            add_faint_line(text);
        }
    }
    void add_floor(const std::vector<address_label>& labels) {
        std::vector<std::string_view> marks(contents.grid.room(), glyphs.floor);
        for (const address_label& label : labels) {
            marks[static_cast<std::size_t>(label.mark) - label_size - axis_size] = glyphs.floor_tick;
        }
        add_side("", glyphs.corner);
        add_parts(break_mark(), {character_style::faint, glyphs.floor}, [&](const part& of) {
            for (std::uint32_t at = 0; at < of.columns() * repeat_of(of); ++at) {
                lines.add(character_style::faint, marks[of.begin + at]);
            }
        });
    }

    /// Of what occurs, in as many lines as it takes.
    void add_legend() {
        constexpr std::size_t longest_entry = 21;
        const std::size_t left = std::min(label_size + axis_size, screen.columns - longest_entry);
        std::size_t at = 0;
        for (std::size_t index = 1; index < meanings; ++index) {
            if (!occurs.test(index)) {
                continue;
            }
            const std::size_t size = shown_size(glyphs.samples[index]) + 1 + legend_texts[index].size();
            if (at != 0 && at + 2 + size > screen.columns) {
                lines.end_line();
                at = 0;
            }
            lines.add(character_style::plain, std::string(at == 0 ? left : 2, ' '));
            at += (at == 0 ? left : 2) + size;
            lines.add(styles_of_legend[index], glyphs.samples[index]);
            lines.add(character_style::plain, fmt::format(" {}", legend_texts[index]));
        }
        lines.end_line();
    }

    /// By meaning.
    static constexpr std::array<character_style, meanings> styles_of_legend = {
        character_style::plain,    character_style::value,      character_style::value,
        character_style::envelope, character_style::plain,      character_style::value,
        character_style::value,    character_style::value,      character_style::set,
        character_style::same,     character_style::partly_set, character_style::dont_care,
        character_style::faint,    character_style::faint};
    static constexpr cell blank = {character_style::plain, " "};

    const picture_contents& contents;
    const character_screen& screen;
    const glyph_set& glyphs;
    styled_lines lines;
    std::uint32_t most_rows;
    std::size_t label_size;
    std::bitset<meanings> occurs;
};

} // namespace

std::size_t label_size_for(const value_order& order) {
    return std::max(usual_label_size, order.text_size());
}

picture_size size_for(std::uint32_t screen_columns, std::size_t label_size, std::uint32_t rows) {
    constexpr std::uint32_t break_columns = 3;
    const auto columns = screen_columns - static_cast<std::uint32_t>(label_size + axis_size);
    return {columns, rows, columns, 1, break_columns};
}

std::string draw(const picture_contents& contents, std::uint32_t rows, const character_screen& screen) {
    return character_picture(contents, rows, screen).draw();
}

} // namespace kvrimage::characters

#include "tools/kvrmem/edit/mif_edit.h"

#include "kvr/memory/mif/mif_reader.h"
#include "tools/kvrmem/edit/mif_line.h"
#include "tools/kvrmem/edit/mif_line_style.h"
#include "tools/kvrmem/edit/mif_statement.h"
#include "tools/kvrmem/edit/mif_survey.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/mif_unread_text.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

namespace kvrmem {

namespace {

/// @p word of @p image as its file shows it.
std::string mif_text(const memory_image& image, const std::string& word, const digit_style& style) {
    std::string text;
    if (!show_word(word, image.data_radix, image.width, text)) {
        throw tool_error(exit_code::wrong_usage,
                         fmt::format("word {} has a don't-care digit, which {} cannot show", word,
                                     radix_title(image.data_radix)));
    }
    return in_style(text, style);
}

/// Second look: makes the changes of the statements that were found.
class statement_editor {
public:
    statement_editor(std::string_view file_text, const memory_image& memory,
                     const std::vector<touched_place>& places, const kvr::address_set& single_addresses)
        : text(file_text),
          image(memory),
          next(places.begin()),
          end(places.end()),
          taken(single_addresses) {}

    void take(const mif_statement& statement) {
        if (next == end || next->number != statement.number()) {
            return;
        }
        if (has_value_for_each_address(statement.content())) {
            edit_values(statement, next->pieces);
        } else {
            edit_range(statement, next->pieces);
        }
        ++next;
    }
    [[nodiscard]] std::vector<text_change> take_changes() { return std::move(changes); }

private:
    void change(std::size_t offset, std::size_t length, std::string replacement) {
        if (text.substr(offset, length) != replacement) {
            changes.push_back({offset, length, std::move(replacement)});
        }
    }

    // --- "<address> : <value> <value> …;", and ranges with as many values as addresses ---

    static bool has_value_for_each_address(const kvr::mif_content& content) {
        return content.values.size() == std::uint64_t{content.last} - content.first + 1;
    }

    void edit_values(const mif_statement& statement, const std::vector<edit_piece>& pieces) {
        for (const edit_piece& piece : pieces) {
            for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
                if (image.words[static_cast<std::uint32_t>(address)] != piece.word(address)) {
                    const std::string_view value =
                        statement.content().values[address - statement.content().first];
                    change(statement.offset_of(value), value.size(),
                           mif_text(image, piece.word(address), kvrmem::style_of(statement.in_file(value))));
                }
            }
        }
    }

    // --- "[<first>..<last>] : <value> <value> …;" ---

    void edit_range(const mif_statement& statement, const std::vector<edit_piece>& pieces) {
        std::vector<mif_line> lines = lines_of(statement, pieces);
        if (lines.empty()) {
            return;
        }
        join_taken(lines, taken);
        const std::size_t end_of_statement = statement.end();
        mif_line_style style = kvrmem::style_of(statement.content(), statement.indent());
        const digit_style first = kvrmem::style_of(statement.first_address());
        const digit_style last = kvrmem::style_of(statement.last_address());
        style.address = {std::min(first.digits, last.digits), first.lower_case || last.lower_case};
        const std::string_view line_end = line_end_at(text, statement.behind());
        change_addresses(statement, lines.front(), style);
        change_values(statement, lines.front(), style, line_end);
        std::string more;
        for (std::size_t index = 1; index < lines.size(); ++index) {
            more.append(line_end).append(line_text(lines[index], image.address_radix, style, line_end));
        }
        change(end_of_statement, 0, std::move(more));
    }

    /// The lines that the range @p statement becomes; none when no word changes.
    [[nodiscard]] std::vector<mif_line> lines_of(const mif_statement& statement,
                                                 const std::vector<edit_piece>& pieces) const {
        std::vector<mif_line> lines;
        std::uint64_t address = statement.content().first;
        for (const edit_piece& piece : changed_pieces(statement, pieces)) {
            add_old_line(lines, statement, address, piece.first);
            lines.push_back(new_line(statement, piece));
            address = piece.last + 1;
        }
        if (!lines.empty()) {
            add_old_line(lines, statement, address, std::uint64_t{statement.content().last} + 1);
        }
        return lines;
    }
    /// Those of @p pieces that change a word. Two of one edit are one: what lies between them is set by a
    /// statement behind this one.
    [[nodiscard]] std::vector<edit_piece> changed_pieces(const mif_statement& statement,
                                                         const std::vector<edit_piece>& pieces) const {
        std::vector<edit_piece> changed;
        bool previous_is_changed = false;
        for (const edit_piece& piece : pieces) {
            const bool is_changed = changes_words(piece, statement.content().values.size());
            if (is_changed && previous_is_changed && changed.back().edit == piece.edit) {
                changed.back().last = piece.last;
            } else if (is_changed) {
                changed.push_back(piece);
            }
            previous_is_changed = is_changed;
        }
        return changed;
    }
    /// @p period: after how many words those that are there repeat.
    [[nodiscard]] bool changes_words(const edit_piece& piece, std::size_t period) const {
        const std::uint64_t both = std::lcm(std::uint64_t{period}, std::uint64_t{piece.edit->words.size()});
        const std::uint64_t end_address = piece.first + std::min(piece.size(), both);
        for (std::uint64_t address = piece.first; address < end_address; ++address) {
            if (image.words[static_cast<std::uint32_t>(address)] != piece.word(address)) {
                return true;
            }
        }
        return false;
    }
    /// The value of @p statement, a range, at @p address as it stands there.
    [[nodiscard]] std::string_view value_at(const mif_statement& statement, std::uint64_t address) const {
        return statement.in_file(statement.content().values[(address - statement.content().first) %
                                                            statement.content().values.size()]);
    }
    void add_old_line(std::vector<mif_line>& lines, const mif_statement& statement, std::uint64_t first,
                      std::uint64_t behind) const {
        if (first == behind) {
            return;
        }
        mif_line line = {first, behind - 1, {}};
        const std::uint64_t count =
            std::min<std::uint64_t>(statement.content().values.size(), behind - first);
        for (std::uint64_t address = first; address < first + count; ++address) {
            line.values.emplace_back(value_at(statement, address));
        }
        lines.push_back(std::move(line));
    }
    [[nodiscard]] mif_line new_line(const mif_statement& statement, const edit_piece& piece) const {
        mif_line line = {piece.first, piece.last, {}};
        const std::uint64_t count = std::min<std::uint64_t>(piece.edit->words.size(), piece.size());
        for (std::uint64_t address = piece.first; address < piece.first + count; ++address) {
            line.values.push_back(
                mif_text(image, piece.word(address), kvrmem::style_of(value_at(statement, address))));
        }
        return line;
    }

    /// Puts the addresses of @p line, the first that @p statement becomes, in the place of those there. Their
    /// first address is the same.
    void change_addresses(const mif_statement& statement, const mif_line& line, const mif_line_style& style) {
        if (!line.is_range()) {
            change_to_single_address(statement, std::string(statement.first_address()));
            return;
        }
        if (line.last != statement.content().last) {
            const std::string_view last = statement.content().last_address.in(statement.content().text);
            change(statement.offset_of(last), last.size(),
                   address_text(line.last, image.address_radix, style.address));
        }
    }
    void change_to_single_address(const mif_statement& statement, const std::string& address) {
        const range_brackets brackets = brackets_of(statement.content());
        if (statement.line_of(brackets.open) == statement.line_of(brackets.close)) {
            const std::size_t begin = statement.offset_of(brackets.open);
            change(begin, statement.offset_of(brackets.close) + 1 - begin, address);
            return;
        }
        // Over several lines, what stands between (line ends and comments) stays.
        for (std::size_t position = brackets.open; position <= brackets.close; ++position) {
            const bool is_blank =
                mif_blanks.find(statement.content().text[position]) != std::string_view::npos;
            if (position == statement.content().first_address.begin) {
                change(statement.offset_of(position), 1, address);
            } else if (!is_blank) {
                change(statement.offset_of(position), 1, "");
            }
        }
    }

    /// Puts the values of @p line, the first that @p statement becomes, in the place of those there.
    void change_values(const mif_statement& statement, const mif_line& line, const mif_line_style& style,
                       std::string_view line_end) {
        std::size_t behind = 0; // the value before this one
        std::size_t growth = 0;
        for (std::size_t index = 0; index < statement.content().values.size(); ++index) {
            const std::string_view value = statement.content().values[index];
            const std::size_t offset = statement.offset_of(value);
            if (index >= line.values.size()) {
                const std::string_view blanks = text.substr(behind, offset - behind);
                const bool removes_blanks = blanks.find_first_not_of(" \t,") == std::string_view::npos;
                const std::size_t begin = removes_blanks ? behind : offset;
                change(begin, offset + value.size() - begin, "");
            } else {
                std::string replacement = line.values[index];
                growth += replacement.size() - std::min(replacement.size(), value.size());
                if (index + 1 == statement.content().values.size()) {
                    const std::size_t value_end = offset + value.size();
                    const std::size_t tail = end_of_line(text, value_end) - value_end;
                    append_values(replacement, line.values, index + 1, style, line_end,
                                  value_end - statement.line_of(position_of(statement, value)) + growth,
                                  kvr::mif_reader::line_limit - std::min(tail, kvr::mif_reader::line_limit));
                }
                change(offset, value.size(), std::move(replacement));
            }
            behind = offset + value.size();
        }
    }
    static std::size_t position_of(const mif_statement& statement, std::string_view value) {
        return static_cast<std::size_t>(value.data() - statement.content().text.data());
    }

    std::string_view text;
    const memory_image& image;
    std::vector<text_change> changes;
    std::vector<touched_place>::const_iterator next;
    std::vector<touched_place>::const_iterator end;
    taken_addresses taken;
};

/// Lines for @p pieces, whose words no statement sets.
std::string lines_for_unset(const memory_image& image, const std::vector<edit_piece>& pieces,
                            const mif_line_style& style, std::string_view line_end) {
    std::string lines;
    for (const edit_piece& piece : pieces) {
        mif_line line = {piece.first, piece.last, {}};
        const std::uint64_t count = std::min<std::uint64_t>(piece.edit->words.size(), piece.size());
        for (std::uint64_t address = piece.first; address < piece.first + count; ++address) {
            line.values.push_back(mif_text(image, piece.word(address), style.value));
        }
        lines.append(line_text(line, image.address_radix, style, line_end)).append(line_end);
    }
    return lines;
}

} // namespace

std::vector<text_change> mif_changes(std::string_view text, const memory_image& image, edit_pieces pieces) {
    kvr::mif_memory memory(nullptr);
    const mif_survey survey = survey_mif(text, image, pieces, memory);
    const std::vector<touched_place> places = find_touched_places(survey.places, pieces);

    statement_editor editor(text, image, places, memory.address_set);
    kvr::mif_memory again(nullptr);
    for_each_statement(text, again, [&editor](const mif_statement& statement) { editor.take(statement); });
    std::vector<text_change> changes = editor.take_changes();
    const std::vector<edit_piece> unset = pieces.all();
    if (!unset.empty()) {
        const std::string_view line_end = line_end_at(text, survey.end_line);
        changes.push_back({survey.end_line, 0, lines_for_unset(image, unset, survey.style, line_end)});
    }
    return changes;
}

} // namespace kvrmem

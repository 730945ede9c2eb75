#include "kvrimage/formats/mif/mif_edit.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/edit/edit_pieces.h"
#include "kvrimage/edit/text_lines.h"
#include "kvrimage/edit/touched_places.h"
#include "kvrimage/formats/mif/mif_line_style.h"
#include "kvrimage/formats/mif/mif_survey.h"
#include "kvrimage/formats/mif/mif_tokens.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <string>
#include <utility>

namespace kvrimage {

namespace {

constexpr std::string_view line_blanks = " \t\r";

/// The file that is edited, and the memory that it holds.
class edited_mif {
public:
    edited_mif(std::string_view file, std::uint64_t base_of_image, const read_result& ours)
        : contents(file),
          image(*ours.image),
          base(base_of_image),
          form{ours.facts.address_radix.value_or(radix::hex), ours.facts.data_radix.value_or(radix::hex),
               base + image.depth()} {}

    /// True when @p piece changes the word at @p address.
    [[nodiscard]] bool changes(const edit_piece& piece, std::uint64_t address) const {
        return image.words()[address - base] != piece.text_at(address);
    }
    /// The word of @p piece at @p address as the file shows it. One that it cannot show is noted.
    [[nodiscard]] std::string shown(const edit_piece& piece, std::uint64_t address,
                                    const digit_style& style) {
        const std::string word = piece.text_at(address);
        std::string text;
        if (show_word(word, form.data, image.width(), text)) {
            return in_style(text, style);
        }
        refuse(diagnose::mif_dont_care({}, word, address - base, title_of(form.data), ""));
        return word;
    }
    /// There are no edits because of @p reason, the first of them.
    void refuse(diagnostic reason) {
        if (result.diagnostics.empty()) {
            result.diagnostics.push_back(std::move(reason));
        }
    }
    /// @p replacement for what @p where covers, unless it is there already. In the order of the file.
    void change(const span& where, std::string replacement) {
        if (where.in(contents) != replacement) {
            result.edits.push_back({where.offset, where.length, std::move(replacement)});
        }
    }

    std::string_view contents;
    const memory_image& image;
    std::uint64_t base; ///< the address that the file has for word 0; addresses are those of the file
    mif_number_form form;
    edit_result result;
};

// --- a range that is split ---

/// Makes several statements of a range.
class range_split {
public:
    range_split(edited_mif& edited, const mif_statement& range, const address_range& of_range,
                taken_addresses& of_file)
        : file(edited),
          statement(range),
          addresses(of_range),
          taken(of_file) {}

    void make(const std::vector<edit_piece>& pieces) {
        std::vector<mif_line> lines = lines_for(changed(pieces));
        if (lines.empty()) {
            return;
        }
        if (statement.sound && !can_become_single()) {
            taken.add(addresses.first);
        }
        if (lines.size() > 1 || lines.front().is_range()) {
            join_taken(lines, taken);
        }
        style = style_of(file.contents, statement);
        line_end = line_end_at(file.contents, next_line(file.contents, statement.whole.end()));
        if (!statement.sound) {
            write_anew(lines);
            return;
        }
        change_addresses(lines.front());
        change_values(lines.front());
        if (lines.size() > 1) {
            add_lines(lines_text(lines, 1));
        }
    }

private:
    /// In the place of a statement of wrong form, if it sets a single word and has a line of its own.
    void write_anew(const std::vector<mif_line>& lines) {
        const std::string_view text = statement.whole.in(file.contents);
        if (addresses.first != addresses.last || text.find('\n') != std::string_view::npos) {
            file.refuse(diagnose::mif_edit_statement(statement.whole, text));
            return;
        }
        file.change(statement.whole, lines_text(lines, 0).substr(line_end.size() + style.indent.size()));
    }

    /// Those of @p pieces that change a word. Two neighbours of one assignment are one: what is between them
    /// is set by a later statement.
    [[nodiscard]] std::vector<edit_piece> changed(const std::vector<edit_piece>& pieces) const {
        std::vector<edit_piece> result;
        bool previous_is_changed = false;
        for (const edit_piece& piece : pieces) {
            const bool is_changed = changes_words(piece);
            if (is_changed && previous_is_changed && result.back().source == piece.source) {
                result.back().last = piece.last;
            } else if (is_changed) {
                result.push_back(piece);
            }
            previous_is_changed = is_changed;
        }
        return result;
    }
    [[nodiscard]] bool changes_words(const edit_piece& piece) const {
        const std::uint64_t period = std::max<std::uint64_t>(statement.values.size(), 1);
        const std::uint64_t both = std::lcm(period, std::uint64_t{piece.source->words.size()});
        const std::uint64_t end = piece.first + std::min(piece.size(), both);
        for (std::uint64_t address = piece.first; address < end; ++address) {
            if (file.changes(piece, address)) {
                return true;
            }
        }
        return false;
    }

    /// The lines that the range becomes; none when no word changes.
    [[nodiscard]] std::vector<mif_line> lines_for(const std::vector<edit_piece>& pieces) {
        std::vector<mif_line> lines;
        std::uint64_t address = addresses.first;
        for (const edit_piece& piece : pieces) {
            add_old_line(lines, address, piece.first);
            lines.push_back(new_line(piece));
            address = piece.last + 1;
        }
        if (!lines.empty()) {
            add_old_line(lines, address, addresses.last + 1);
        }
        return lines;
    }
    [[nodiscard]] std::string_view old_value(std::uint64_t address) const {
        return statement.values[(address - addresses.first) % statement.values.size()].in(file.contents);
    }
    void add_old_line(std::vector<mif_line>& lines, std::uint64_t first, std::uint64_t end) const {
        if (first == end || statement.values.empty()) {
            return;
        }
        mif_line line = {first, end - 1, {}};
        const std::uint64_t count = std::min<std::uint64_t>(statement.values.size(), end - first);
        for (std::uint64_t address = first; address < first + count; ++address) {
            line.values.emplace_back(old_value(address));
        }
        lines.push_back(std::move(line));
    }
    [[nodiscard]] mif_line new_line(const edit_piece& piece) {
        mif_line line = {piece.first, piece.last, {}};
        for (std::uint64_t address = piece.first; address < piece.first + piece.period(); ++address) {
            const digit_style value =
                statement.values.empty() ? digit_style() : kvrimage::style_of(old_value(address));
            line.values.push_back(file.shown(piece, address, value));
        }
        return line;
    }

    /// The addresses with their brackets.
    [[nodiscard]] span range_text() const {
        const std::uint64_t begin =
            statement.open.length != 0 ? statement.open.offset : statement.first.offset;
        return {begin, std::max(statement.last.end(), statement.close.end()) - begin};
    }
    [[nodiscard]] bool is_on_one_line() const {
        return range_text().in(file.contents).find_first_of("\n%") == std::string_view::npos;
    }
    /// The ".." between the addresses; nothing where a comment of "%" may hide it.
    [[nodiscard]] std::optional<span> find_dots() const {
        std::uint64_t at = statement.first.end();
        while (file.contents[at] != '.') {
            if (file.contents[at] == '%') {
                return std::nullopt;
            }
            at = file.contents.substr(at, 2) == "--" ? next_line(file.contents, at) : at + 1;
        }
        return span{at, 2};
    }
    /// False where the brackets cannot be removed.
    [[nodiscard]] bool can_become_single() const { return is_on_one_line() || find_dots(); }
    /// Over several lines, what is between (line ends and comments) stays.
    void change_to_single() {
        if (is_on_one_line()) {
            file.change(range_text(), std::string(statement.first.in(file.contents)));
            return;
        }
        for (const span& part : {statement.open, *find_dots(), statement.last, statement.close}) {
            file.change(part, "");
        }
    }
    /// Puts the addresses of @p line, the first that the range becomes, in the place of those there. Their
    /// first address is the same.
    void change_addresses(const mif_line& line) {
        if (!line.is_range()) {
            change_to_single();
        } else if (line.last != addresses.last) {
            file.change(statement.last, address_text(line.last, file.form.addresses, style.address));
        }
    }

    /// Puts the values of @p line, the first that the range becomes, in the place of those there.
    void change_values(const mif_line& line) {
        std::uint64_t after_previous = 0;
        std::size_t growth = 0;
        for (std::size_t index = 0; index < statement.values.size(); ++index) {
            const span& value = statement.values[index];
            if (index >= line.values.size()) {
                remove_value(after_previous, value);
            } else {
                growth += line.values[index].size() -
                          std::min<std::size_t>(line.values[index].size(), value.length);
                const bool is_last = index + 1 == statement.values.size();
                file.change(value, is_last ? with_further_values(line, index, growth) : line.values[index]);
            }
            after_previous = value.end();
        }
    }
    /// With the blanks before it, unless a comment or a line end is among them.
    void remove_value(std::uint64_t after_previous, const span& value) {
        const std::string_view before = span{after_previous, value.offset - after_previous}.in(file.contents);
        const bool removes_blanks = before.find_first_not_of(" \t,") == std::string_view::npos;
        const std::uint64_t begin = removes_blanks ? after_previous : value.offset;
        file.change({begin, value.end() - begin}, "");
    }
    /// The value @p index of @p line, the last that the range has, and those that follow it.
    [[nodiscard]] std::string with_further_values(const mif_line& line, std::size_t index,
                                                  std::size_t growth) const {
        std::string text = line.values[index];
        const std::size_t end = statement.values[index].end();
        const std::size_t tail = end_of_line(file.contents, end) - end;
        append_values(text, line.values, index + 1, style, line_end,
                      end - start_of_line(file.contents, statement.values[index].offset) + growth,
                      longest_kvr_line - std::min(tail, longest_kvr_line));
        return text;
    }

    [[nodiscard]] std::string lines_text(const std::vector<mif_line>& lines, std::size_t from) const {
        std::string text;
        for (std::size_t index = from; index < lines.size(); ++index) {
            text.append(line_end).append(line_text(lines[index], file.form.addresses, style, line_end));
        }
        return text;
    }
    /// After the comment on the statement's line, where nothing but a comment follows it there.
    void add_lines(const std::string& text) {
        const std::uint64_t end = statement.whole.end();
        if (statement.semicolon.length == 0) {
            file.change({end, 0}, ";" + text);
            return;
        }
        const std::size_t line = end_of_line(file.contents, end);
        const std::string_view rest = file.contents.substr(end, line - end);
        const std::size_t begin = std::min(rest.find_first_not_of(line_blanks), rest.size());
        file.change({is_comment_alone(rest.substr(begin)) ? line : end, 0}, text);
    }
    /// True when @p rest, up to the end of a line, is "", or one comment that ends with the line.
    static bool is_comment_alone(std::string_view rest) {
        const std::string_view inside = rest.substr(std::min<std::size_t>(rest.size(), 1));
        const std::size_t close = inside.find('%');
        return rest.empty() || rest.starts_with("--") ||
               (rest.starts_with('%') && close != std::string_view::npos &&
                inside.find_first_not_of(line_blanks, close + 1) == std::string_view::npos);
    }

    edited_mif& file;
    const mif_statement& statement;
    const address_range& addresses;
    taken_addresses& taken;
    mif_line_style style;
    std::string_view line_end;
};

// --- the second look ---

/// Goes to the statements that hold the words, and nowhere else.
class touched_statements : public mif_sink {
public:
    touched_statements(edited_mif& edited, const std::vector<touched_place>& places, const mif_survey& survey)
        : file(edited),
          next(places.begin()),
          end_of_places(places.end()),
          taken(survey.single_addresses) {}

    /// The style of the statement at @p offset is wanted.
    void want_style_of(std::uint64_t offset) { example = offset; }
    [[nodiscard]] const mif_line_style& example_style() const noexcept { return style; }

    void statement(const mif_statement& found) override {
        if (example == found.whole.offset) {
            style = style_of(file.contents, found);
            example.reset();
        }
        if (next == end_of_places || next->number != found.whole.offset) {
            return;
        }
        const address_range addresses = set_addresses_of(file.contents, found, file.form);
        if (found.sound && found.values.size() > addresses.last - addresses.first) {
            edit_values(found, addresses);
        } else {
            range_split(file, found, addresses, taken).make(next->pieces);
        }
        ++next;
    }
    std::size_t read_lines(std::size_t offset) override {
        std::uint64_t target = next != end_of_places ? next->number : file.contents.size();
        target = std::min(target, example.value_or(target));
        const std::size_t line =
            target != file.contents.size() ? start_of_line(file.contents, target) : target;
        const bool has_more =
            file.contents.substr(line, target - line).find_first_not_of(" \t") != std::string_view::npos;
        return line > offset && !has_more ? line - offset : 0;
    }

private:
    /// A value for each address.
    void edit_values(const mif_statement& found, const address_range& addresses) {
        for (const edit_piece& piece : next->pieces) {
            for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
                if (file.changes(piece, address)) {
                    const span& value = found.values[address - addresses.first];
                    file.change(value,
                                file.shown(piece, address, kvrimage::style_of(value.in(file.contents))));
                }
            }
        }
    }

    edited_mif& file;
    std::vector<touched_place>::const_iterator next;
    std::vector<touched_place>::const_iterator end_of_places;
    taken_addresses taken;
    std::optional<std::uint64_t> example;
    mif_line_style style;
};

// --- words that no statement sets ---

std::string lines_for_unset(edited_mif& file, const std::vector<edit_piece>& pieces,
                            const mif_line_style& style, std::string_view line_end) {
    std::string lines;
    for (const edit_piece& piece : pieces) {
        mif_line line = {piece.first, piece.last, {}};
        for (std::uint64_t address = piece.first; address < piece.first + piece.period(); ++address) {
            line.values.push_back(file.shown(piece, address, style.value));
        }
        lines.append(line_text(line, file.form.addresses, style, line_end)).append(line_end);
    }
    return lines;
}

/// The style for a file that has no statement to follow: all digits of the word.
mif_line_style style_without_example(const edited_mif& file) {
    mif_line_style style;
    std::string text;
    show_word("0", file.form.data, file.image.width(), text);
    style.value.digits = text.size();
    return style;
}

/// Adds lines for @p pieces before END, which may share its line with other things, or be missing.
void add_unset(edited_mif& file, const std::vector<edit_piece>& pieces, const mif_line_style& style,
               std::uint64_t end) {
    const std::size_t line = start_of_line(file.contents, end);
    const std::string_view line_end = line_end_at(file.contents, line);
    const std::string_view before = file.contents.substr(line, end - line);
    const bool has_line = before.find_first_not_of(line_blanks) == std::string_view::npos;
    const std::string lines = lines_for_unset(file, pieces, style, line_end);
    file.change({has_line ? line : end, 0}, has_line ? lines : std::string(line_end) + lines);
}

// --- what cannot be done ---

/// The first line that @p edits make longer than the library takes; nothing when there is none.
std::optional<span> line_made_too_long(std::string_view contents, const std::vector<text_edit>& edits) {
    std::size_t length = 0; // of the new line so far
    std::size_t copied = 0;
    for (const text_edit& edit : edits) {
        const std::size_t line = start_of_line(contents, edit.offset);
        length = line > copied ? edit.offset - line : length + edit.offset - copied;
        const std::size_t break_at = edit.replacement.rfind('\n');
        length = break_at == std::string::npos ? length + edit.replacement.size()
                                               : edit.replacement.size() - break_at - 1;
        copied = edit.offset + edit.length;
        const std::size_t end = end_of_line(contents, copied);
        const std::size_t old_start = start_of_line(contents, copied);
        if (length + end - copied > longest_kvr_line && end - old_start <= longest_kvr_line) {
            return span{old_start, end - old_start};
        }
    }
    return std::nullopt;
}

std::vector<diagnostic> faults_of(const memory_image& image, std::span<const assignment> assignments) {
    std::uint64_t last = 0;
    for (const assignment& made : assignments) {
        last = std::max(last, made.addresses.last);
    }
    if (last <= image.last_address()) {
        return {};
    }
    return {diagnose::beyond_depth({}, last, image.depth(), image.last_address(), "DEPTH", last + 1)};
}

} // namespace

edit_result edit_mif(std::string_view contents, const read_options& options, const read_result& ours,
                     std::span<const assignment> assignments) {
    if (!ours.image) {
        return {{}, ours.diagnostics};
    }
    if (auto faults = faults_of(*ours.image, assignments); !faults.empty()) {
        return {{}, std::move(faults)};
    }
    const std::uint64_t base = options.base.value_or(0);
    edit_pieces pieces(assignments, base);
    edited_mif file(contents, base, ours);
    mif_survey survey;
    survey_mif(contents, file.form, pieces, survey);
    const std::vector<touched_place> places = find_touched_places(survey.places, pieces);
    touched_statements editor(file, places, survey);
    if (survey.last_statement && !pieces.empty()) {
        editor.want_style_of(*survey.last_statement);
    }
    parse_mif(contents, editor);
    if (!pieces.empty()) {
        mif_line_style style = survey.last_statement ? editor.example_style() : style_without_example(file);
        if (survey.last_statement) {
            style.address = survey.addresses.found();
            style.value = survey.values.found();
        }
        add_unset(file, pieces.all(), style, survey.end);
    }
    if (const auto line = line_made_too_long(contents, file.result.edits)) {
        file.refuse(diagnose::mif_edit_length(*line, longest_kvr_line));
    }
    if (!file.result.diagnostics.empty()) {
        file.result.edits.clear();
    }
    return std::move(file.result);
}

} // namespace kvrimage

#include "kvrimage/formats/rif/rif_edit.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/edit/digit_style.h"
#include "kvrimage/edit/touched_places.h"
#include "kvrimage/formats/fast_word_lines.h"
#include "kvrimage/formats/rif/rif_diagnostics.h"
#include "kvrimage/formats/rif/rif_parser.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Returns the text of @p word, which RIF must be able to represent, in the style of the file.
std::string rif_text(const word& value, const digit_style& style) {
    std::string text = in_style(value.to_text(radix::hex).value(), style);
    if (text.starts_with("0x")) {
        std::ranges::replace(text, 'x', 'X'); // the word must not look like it has a prefix
    }
    return text;
}

/// The words of a line that have consecutive addresses.
struct word_line {
    std::uint64_t number = 0; ///< sequence number
    std::uint64_t first = 0;  ///< address
    fast_word_line regular;   ///< empty if the words are in `spans`
    std::vector<span> spans;

    [[nodiscard]] std::size_t count() const { return regular.count != 0 ? regular.count : spans.size(); }
    [[nodiscard]] address_range addresses() const { return {first, first + count() - 1}; }
    [[nodiscard]] span word(std::string_view contents, std::size_t index) const {
        if (regular.count == 0) {
            return spans[index];
        }
        return {static_cast<std::size_t>(regular[index].data() - contents.data()), regular.length};
    }
};

/// Calls @p TakeWords with every word_line of a file, and @p TakeAddress with the digits of every address.
template <class TakeWords, class TakeAddress>
class word_line_walk final : public rif_sink {
public:
    word_line_walk(std::string_view contents, TakeWords words, TakeAddress address)
        : text(contents),
          parser(contents, *this),
          take_words(std::move(words)),
          take_address(std::move(address)) {}

    void walk() {
        while (!parser.at_end()) {
            if (!read_fast_line()) {
                parser.parse_line();
                end_line();
            }
        }
    }
    void take(const rif_piece& piece) override {
        if (piece.what == rif_piece::kind::word && piece.address != no_rif_address) {
            line.first = line.spans.empty() ? piece.address : line.first;
            line.spans.push_back(piece.where);
        } else if (piece.what == rif_piece::kind::address) {
            end_line();
            take_address(piece.digits.in(text));
        }
    }

private:
    /// Returns false and changes nothing if the current line is not regular.
    bool read_fast_line() {
        const fast_word_line found = find_fast_word_line(text, parser.position());
        const std::uint64_t address = found.is_address ? found.address : parser.next_address();
        if (found.end == 0 || address > deepest_memory - found.count) {
            return false;
        }
        if (found.is_address) {
            const std::string_view digits = text.substr(parser.position() + 1);
            take_address(digits.substr(0, digits.find_first_of("\r\n")));
        }
        line.first = address;
        line.regular = found;
        end_line();
        line.regular = {};
        parser.skip_to(found.end, address + found.count);
        return true;
    }

    void end_line() {
        if (line.count() != 0) {
            take_words(std::as_const(line));
            ++line.number;
            line.spans.clear();
        }
    }

    std::string_view text;
    rif_parser parser;
    TakeWords take_words;
    TakeAddress take_address;
    word_line line;
};

template <class TakeWords, class TakeAddress>
void for_each_word_line(std::string_view contents, TakeWords take_words, TakeAddress take_address) {
    word_line_walk(contents, std::move(take_words), std::move(take_address)).walk();
}

/// The result of one pass over the lines.
struct line_survey {
    std::vector<setting_place> places;
    std::size_t words_a_line = 1; ///< on the longest line
    digit_style address{1, true}; ///< lower case, as the library kvr writes them
    digit_style value;
};

line_survey survey_lines(std::string_view contents, const edit_pieces& pieces) {
    line_survey survey;
    style_finder values;
    for_each_word_line(
        contents,
        [&](const word_line& line) {
            if (pieces.touch(line.addresses())) {
                survey.places.push_back({line.number, line.addresses()});
            }
            survey.words_a_line = std::max(survey.words_a_line, line.count());
            if (line.regular.count != 0) {
                values.see_all({line.regular.words, line.regular.count * (line.regular.length + 1) - 1},
                               line.regular.length, line.regular.has_lower_case);
            }
            for (const span& word : line.spans) {
                values.see(word.in(contents));
            }
        },
        [&](std::string_view digits) {
            const bool has_upper = std::ranges::any_of(digits, [](char c) { return c >= 'A' && c <= 'F'; });
            survey.address = {digits.starts_with('0') ? digits.size() : 1, !has_upper};
        });
    survey.value = values.found();
    return survey;
}

/// The words of a file before the edit, by file address.
struct old_words {
    const memory_image& image;
    std::uint64_t base; ///< file address of word 0

    /// Returns the text of the word at @p address; "" if the file has no readable word there.
    [[nodiscard]] std::string_view operator[](std::uint64_t address) const {
        return address - base < image.depth() ? image.words()[address - base] : "";
    }
};

/// Replaces the words of @p line whose value @p pieces change.
void change_line(std::string_view contents, const old_words& old, const word_line& line,
                 const std::vector<edit_piece>& pieces, std::vector<text_edit>& edits) {
    for (const edit_piece& piece : pieces) {
        for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
            if (old[address] != piece.text_at(address)) {
                const span where = line.word(contents, address - line.first);
                edits.push_back({where.offset, where.length,
                                 rif_text(piece.word_at(address), style_of(where.in(contents)))});
            }
        }
    }
}

void change_words(std::string_view contents, const old_words& old, const std::vector<touched_place>& places,
                  std::vector<text_edit>& edits) {
    auto next = places.begin();
    for_each_word_line(
        contents,
        [&](const word_line& line) {
            if (next != places.end() && next->number == line.number) {
                change_line(contents, old, line, next->pieces, edits);
                ++next;
            }
        },
        [](std::string_view) {});
}

/// Returns address lines and word lines for @p pieces, each after @p line_end.
std::string lines_for_unset(const std::vector<edit_piece>& pieces, const line_survey& survey,
                            std::string_view line_end) {
    std::string lines;
    std::uint64_t next = ~std::uint64_t{0};
    std::size_t words_in_line = 0;
    for (const edit_piece& piece : pieces) {
        if (piece.first != next) {
            lines.append(line_end).append("@");
            lines.append(in_style(fmt::format("{:X}", piece.first), survey.address));
            words_in_line = 0;
        }
        for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
            lines.append(words_in_line == 0 ? line_end : " ");
            lines.append(rif_text(piece.word_at(address), survey.value));
            words_in_line = (words_in_line + 1) % survey.words_a_line;
        }
        next = piece.last + 1;
    }
    return lines;
}

/// Returns where to add lines, so that the file keeps its final line end or the lack of one.
std::size_t end_of_last_line(std::string_view contents) {
    if (!contents.ends_with('\n')) {
        return contents.size();
    }
    return contents.size() - (contents.ends_with("\r\n") ? 2 : 1);
}

/// Returns why RIF cannot represent @p made. @p highest is the last possible address.
std::optional<diagnostic> find_unwritable(const assignment& made, std::uint64_t highest) {
    if (made.addresses.last > highest) {
        return diagnose::address_outside({}, fmt::format("{:X}", made.addresses.last),
                                         fmt::format("{:X}", highest));
    }
    for (std::size_t index = 0; index < made.words.size(); ++index) {
        if (!made.words[index].to_text(radix::hex)) {
            return diagnose::dont_care_bit({}, text_of_word(made.words[index]), made.addresses.first + index);
        }
    }
    return std::nullopt;
}

} // namespace

edit_result edit_rif(std::string_view contents, const read_options& options, const read_result& ours,
                     std::span<const assignment> assignments) {
    const std::uint64_t base = options.base.value_or(0);
    edit_result result;
    for (const assignment& made : assignments) {
        if (auto unwritable = find_unwritable(made, highest_rif_address - base)) {
            result.diagnostics.push_back(std::move(*unwritable));
        }
    }
    if (!result.diagnostics.empty()) {
        return result;
    }
    edit_pieces pieces(assignments, base);
    const line_survey survey = survey_lines(contents, pieces);
    change_words(contents, {*ours.image, base}, find_touched_places(survey.places, pieces), result.edits);
    if (!pieces.empty()) {
        const std::string lines = lines_for_unset(pieces.all(), survey, rif_line_end(contents));
        result.edits.push_back({end_of_last_line(contents), 0, lines});
    }
    return result;
}

} // namespace kvrimage

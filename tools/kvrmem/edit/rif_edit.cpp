#include "tools/kvrmem/edit/rif_edit.h"

#include "kvr/memory/rif/rif_reader.h"
#include "tools/kvrmem/memory/rif_line.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

namespace kvrmem {

namespace {

/// @p word of @p image as the file shows it.
std::string rif_text(const memory_image& image, const std::string& word, const digit_style& style) {
    std::string text;
    if (!show_word(word, RADIX_HEX, image.width, text)) {
        throw tool_error(
            exit_code::wrong_usage,
            fmt::format("word {} has a don't-care bit beside a plain one, which RIF cannot show", word));
    }
    return in_style(text, style);
}

/// A line of words.
struct word_line {
    std::uint64_t address; ///< of the first one
    std::size_t offset;    ///< of the line
    std::vector<std::string_view> words;

    [[nodiscard]] std::uint64_t last_address() const { return address + words.size() - 1; }
};

/// Calls @p take_words with every line of words of @p text, a file that was read before, and @p take_address
/// with every address line.
template <class TakeWords, class TakeAddress>
void for_each_line(std::string_view text, TakeWords&& take_words, TakeAddress&& take_address) {
    word_line words{0, 0, {}};
    for (std::size_t offset = 0; offset < text.size(); offset = next_line(text, offset)) {
        const std::string_view line = text.substr(offset, end_of_line(text, offset) - offset);
        words.offset = offset;
        if (is_rif_address_line(line)) {
            words.address = kvr::rif_address(line);
            take_address(line);
            continue;
        }
        words.words.clear();
        for_each_rif_word(line, [&words](const rif_piece& word) { words.words.push_back(word.text); });
        if (!words.words.empty()) {
            take_words(words);
            words.address += words.words.size();
        }
    }
}

/// What one look at the lines finds.
struct line_survey {
    std::vector<setting_place> places;
    std::size_t words_a_line = 0; ///< of the longest line; a file that was read has words
    digit_style address{1, true}; ///< small letters, as the library writes them
    digit_style value;
};

line_survey survey_lines(std::string_view text, const edit_pieces& pieces) {
    line_survey survey;
    style_finder values;
    std::uint64_t number = 0;
    for_each_line(
        text,
        [&](const word_line& line) {
            if (pieces.touch(line.address, line.last_address())) {
                survey.places.push_back({number, line.address, line.last_address()});
            }
            ++number;
            survey.words_a_line = std::max(survey.words_a_line, line.words.size());
            for (const std::string_view word : line.words) {
                values.see(word);
            }
        },
        [&](std::string_view line) {
            const std::string_view digits = split_rif_address(line).digits;
            const bool has_upper =
                std::any_of(digits.begin(), digits.end(), [](char c) { return c >= 'A' && c <= 'F'; });
            survey.address = {digits.starts_with('0') ? digits.size() : 1, !has_upper};
        });
    survey.value = values.found();
    return survey;
}

void change_words(std::string_view text, const memory_image& image, const std::vector<touched_place>& places,
                  std::vector<text_change>& changes) {
    std::uint64_t number = 0;
    auto next = places.begin();
    const auto change_line = [&](const word_line& line) {
        for (const edit_piece& piece : next->pieces) {
            for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
                if (image.words[static_cast<std::uint32_t>(address)] != piece.word(address)) {
                    const std::string_view word = line.words[address - line.address];
                    changes.push_back({static_cast<std::size_t>(word.data() - text.data()), word.size(),
                                       rif_text(image, piece.word(address), style_of(word))});
                }
            }
        }
    };
    for_each_line(
        text,
        [&](const word_line& line) {
            if (next != places.end() && next->number == number) {
                change_line(line);
                ++next;
            }
            ++number;
        },
        [](std::string_view) {});
}

/// Address lines and lines of words for @p pieces, each line behind @p line_end.
std::string lines_for_unset(const memory_image& image, const std::vector<edit_piece>& pieces,
                            const line_survey& survey, std::string_view line_end) {
    std::string lines;
    std::uint64_t next = ~std::uint64_t{0};
    std::size_t words_in_line = 0;
    for (const edit_piece& piece : pieces) {
        if (piece.first != next) {
            const std::string address = fmt::format("{:X}", piece.first);
            lines.append(line_end).append("@").append(in_style(address, survey.address));
            words_in_line = 0;
        }
        for (std::uint64_t address = piece.first; address <= piece.last; ++address) {
            lines.append(words_in_line == 0 ? line_end : " ");
            lines.append(rif_text(image, piece.word(address), survey.value));
            words_in_line = (words_in_line + 1) % survey.words_a_line;
        }
        next = piece.last + 1;
    }
    return lines;
}

} // namespace

std::vector<text_change> rif_changes(std::string_view text, const memory_image& image, edit_pieces pieces) {
    const line_survey survey = survey_lines(text, pieces);
    const std::vector<touched_place> places = find_touched_places(survey.places, pieces);
    std::vector<text_change> changes;
    change_words(text, image, places, changes);
    const std::vector<edit_piece> unset = pieces.all();
    if (!unset.empty()) {
        // A final line end, or that there is none, stays as it is.
        const std::string_view line_end = line_end_at(text, 0);
        const std::size_t behind =
            text.ends_with('\n') ? text.size() - line_end_at(text, text.size()).size() : text.size();
        changes.push_back({behind, 0, lines_for_unset(image, unset, survey, line_end)});
    }
    return changes;
}

} // namespace kvrmem

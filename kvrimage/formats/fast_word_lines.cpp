#include "kvrimage/formats/fast_word_lines.h"

#include "kvr/numeric/digit_run.h"
#include "kvr/numeric/digit_value.h"

namespace kvrimage {

namespace {

/// Number of characters examined after a word at most.
constexpr std::size_t slack = 16;

/// Longer words are left to the parser, so that lookahead stays within the text.
constexpr std::size_t longest_fast_word = 64;

/// Returns the length of the line end at @p at; 0 if there is none.
std::size_t line_end_length(const char* at) noexcept {
    if (*at == '\n') {
        return 1;
    }
    return *at == '\r' && at[1] == '\n' ? 2 : 0;
}

fast_word_line find_address(std::string_view text, std::size_t begin) noexcept {
    constexpr std::size_t most_digits = 8;
    fast_word_line line;
    const char* const first = text.data() + begin + 1;
    const char* at = first;
    for (; static_cast<std::size_t>(at - first) < most_digits && kvr::digit_value(*at) < 16; ++at) {
        line.address = line.address * 16 + kvr::digit_value(*at);
    }
    const std::size_t ending = line_end_length(at);
    if (at != first && ending != 0) {
        line.is_address = true;
        line.end = static_cast<std::size_t>(at - text.data()) + ending;
    }
    return line;
}

/// @param last the last position at which a word may begin
fast_word_line find_words(std::string_view text, std::size_t begin, const char* last) noexcept {
    fast_word_line line;
    line.words = text.data() + begin;
    while (line.length <= longest_fast_word && kvr::digit_value(line.words[line.length]) < 16) {
        ++line.length;
    }
    if (line.length > longest_fast_word) {
        return {};
    }
    const char* at = line.words;
    std::size_t ending = line_end_length(at);
    for (; ending == 0; ++line.count) {
        if (at > last || line.length == 0 || !kvr::are_digits(at, line.length, line.has_lower_case)) {
            return {};
        }
        at += line.length;
        ending = line_end_length(at);
        if (ending == 0 && *at++ != ' ') {
            return {};
        }
        ending = ending != 0 ? ending : line_end_length(at);
    }
    line.end = static_cast<std::size_t>(at - text.data()) + ending;
    return line;
}

} // namespace

fast_word_line find_fast_word_line(std::string_view text, std::size_t begin) noexcept {
    if (text.size() - begin < longest_fast_word + slack) {
        return {};
    }
    if (text[begin] == '@') {
        return find_address(text, begin);
    }
    return find_words(text, begin, text.data() + text.size() - longest_fast_word - slack);
}

} // namespace kvrimage

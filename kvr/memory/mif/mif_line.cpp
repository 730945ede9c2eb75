#include "kvr/memory/mif/mif_line.h"

#include <algorithm>

namespace kvr {

text_span find_token(std::string_view text, std::size_t from) noexcept {
    std::size_t begin = from;
    while (begin < text.size() && !is_value_character(text[begin])) {
        ++begin;
    }
    if (begin >= text.size()) {
        return {};
    }
    std::size_t end = begin + 1;
    while (end < text.size() && is_value_character(text[end])) {
        ++end;
    }
    return {begin, end};
}

void split_values(std::string_view text, std::vector<std::string_view>& values) {
    values.clear();
    const std::string_view data = without_comments(text);
    for (text_span token = find_token(data, 0); token.found(); token = find_token(data, token.end)) {
        values.push_back(token.in(data));
    }
}

std::size_t count_tokens(std::string_view text) noexcept {
    std::size_t count = 0;
    for (text_span token = find_token(text, 0); token.found(); token = find_token(text, token.end)) {
        ++count;
    }
    return count;
}

std::size_t comment_position(std::string_view line) noexcept {
    return line.find("--");
}

std::string_view without_comments(std::string_view line) noexcept {
    line = line.substr(0, comment_position(line));
    return line.substr(0, line.find('%'));
}

void strip_blanks(std::string& text) {
    text.erase(std::remove_if(text.begin(), text.end(), is_mif_blank), text.end());
}

} // namespace kvr

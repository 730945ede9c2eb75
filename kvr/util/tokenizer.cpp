#include "kvr/util/tokenizer.h"

#include <cstddef>
#include <utility>

namespace {

constexpr std::size_t not_found = std::string::npos;

std::string take_all(std::string& rest) {
    return std::exchange(rest, std::string());
}

std::string take_between(std::string& rest, std::size_t begin, std::size_t end, std::size_t next) {
    std::string token = rest.substr(begin, end - begin);
    rest.erase(0, next);
    return token;
}

std::string take_before_any_of(std::string& rest, const std::string& delimiters) {
    const std::size_t end = rest.find_first_of(delimiters);
    return end == not_found ? take_all(rest) : take_between(rest, 0, end, end + 1);
}

std::size_t find_last_before(const std::string& text, char wanted, std::size_t end) {
    return end == 0 ? not_found : text.rfind(wanted, end - 1);
}

// Keeps only the last piece that could begin the delimiter before the token.
std::size_t begin_of_kept_text(const std::string& text, char first_of_delimiter, std::size_t end) {
    const std::size_t last = find_last_before(text, first_of_delimiter, end);
    if (last == not_found) {
        return 0;
    }
    const std::size_t last_but_one = find_last_before(text, first_of_delimiter, last);
    return last_but_one == not_found ? 0 : last_but_one + 1;
}

std::string take_before_whole(std::string& rest, const std::string& delimiter) {
    const std::size_t end = delimiter.empty() ? not_found : rest.find(delimiter);
    if (end == not_found) {
        return take_all(rest);
    }
    const std::size_t begin = begin_of_kept_text(rest, delimiter.front(), end);
    return take_between(rest, begin, end, end + delimiter.size());
}

} // namespace

std::string kvr_get_token(std::string& rest, const std::string& delimiters, bool multi_char_delimiter) {
    return multi_char_delimiter ? take_before_whole(rest, delimiters) : take_before_any_of(rest, delimiters);
}

std::string kvr_get_token_with_delimiter(std::string& rest, const std::string& delimiters,
                                         std::string& found_delimiter) {
    found_delimiter.clear();
    const std::size_t end = rest.find_first_of(delimiters);
    if (end != not_found) {
        found_delimiter = rest[end];
    }
    return take_before_any_of(rest, delimiters);
}

std::string kvr_get_token_at_index(const std::string& text, int index) {
    if (index < 0) {
        return {};
    }
    std::size_t begin = 0;
    for (int passed = 0; passed < index; ++passed) {
        const std::size_t separator = text.find('|', begin);
        if (separator == not_found) {
            return {};
        }
        begin = separator + 1;
    }
    return text.substr(begin, text.find('|', begin) - begin);
}

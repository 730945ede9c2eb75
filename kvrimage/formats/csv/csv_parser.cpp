#include "kvrimage/formats/csv/csv_parser.h"

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::string_view csv_byte_order_mark = "\xEF\xBB\xBF";

std::size_t csv_begin(std::string_view contents) noexcept {
    return contents.starts_with(csv_byte_order_mark) ? csv_byte_order_mark.size() : 0;
}

bool is_csv_blank(char character, char separator) noexcept {
    return character == ' ' || (character == '\t' && separator != '\t');
}

} // namespace

char csv_separator(std::string_view contents) noexcept {
    constexpr std::string_view separators = "\t;,";
    const std::size_t begin = contents.find_first_not_of(" \r\n", csv_begin(contents));
    std::size_t best = separators.size() - 1;
    bool is_quoted = false;
    for (std::size_t at = begin; at < contents.size(); ++at) {
        const char character = contents[at];
        if (!is_quoted && (character == '\n' || character == '\r')) {
            break;
        }
        is_quoted = is_quoted != (character == '"');
        best = is_quoted ? best : std::min(best, separators.find(character));
    }
    return separators[best];
}

csv_parser::csv_parser(std::string_view contents, csv_sink& target)
    : text(contents),
      sink(target),
      separator(csv_separator(contents)),
      next(csv_begin(contents)) {}

bool csv_parser::parse_row() {
    for (skip_blanks(); next != text.size() && at_line_end(); skip_blanks()) {
        ++next;
    }
    if (next == text.size()) {
        return false;
    }
    parse_field();
    while (!at_line_end()) {
        ++next; // the separator
        parse_field();
    }
    hand_out(csv_piece::kind::row_end, next, next);
    return true;
}

void csv_parser::parse_field() {
    skip_blanks();
    if (next != text.size() && text[next] == '"') {
        parse_quoted_field();
        return;
    }
    const std::size_t end = end_of_field();
    std::size_t last = end;
    while (last != next && is_csv_blank(text[last - 1], separator)) {
        --last;
    }
    hand_out(csv_piece::kind::field, next, last);
    next = end;
}

void csv_parser::parse_quoted_field() {
    const std::size_t begin = next + 1;
    std::size_t quote = text.find('"', begin);
    while (quote != std::string_view::npos && text.substr(quote + 1).starts_with('"')) {
        quote = text.find('"', quote + 2);
    }
    if (quote == std::string_view::npos) {
        hand_out(csv_piece::kind::open_quote, next, std::min(text.find_first_of("\r\n", next), text.size()));
        next = text.size();
        return;
    }
    hand_out(csv_piece::kind::field, begin, quote);
    next = quote + 1;
    skip_blanks();
    const std::size_t end = end_of_field();
    if (end != next) {
        hand_out(csv_piece::kind::after_quote, next, end);
    }
    next = end;
}

void csv_parser::skip_blanks() noexcept {
    while (next != text.size() && is_csv_blank(text[next], separator)) {
        ++next;
    }
}

std::size_t csv_parser::end_of_field() const noexcept {
    std::size_t end = next;
    while (end != text.size() && text[end] != separator && text[end] != '\n' && text[end] != '\r') {
        ++end;
    }
    return end;
}

void csv_parser::hand_out(csv_piece::kind what, std::size_t begin, std::size_t end) {
    sink.take({what, {begin, end - begin}});
}

} // namespace kvrimage

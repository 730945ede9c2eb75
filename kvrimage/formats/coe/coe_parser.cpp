#include "kvrimage/formats/coe/coe_parser.h"

#include "kvr/util/letter_case.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

constexpr std::string_view coe_byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view coe_blanks = " \t\r\n\v\f";
constexpr std::string_view radix_setting = "memory_initialization_radix";
constexpr std::string_view vector_name = "memory_initialization_vector";

/// Characters that end a value.
constexpr std::array<bool, 256> ends_coe_value = [] {
    std::array<bool, 256> ends{};
    for (const char character : std::string_view(" \t\r\n\v\f,;=")) {
        ends[static_cast<unsigned char>(character)] = true;
    }
    return ends;
}();

std::string_view without_blanks_at_end(std::string_view line) {
    return line.substr(0, line.find_last_not_of(coe_blanks) + 1);
}

} // namespace

coe_parser::coe_parser(std::string_view contents, coe_sink& target)
    : text(contents),
      sink(target),
      next(contents.starts_with(coe_byte_order_mark) ? coe_byte_order_mark.size() : 0) {}

void coe_parser::parse() {
    for (skip_blanks(); !at_end(); skip_blanks()) {
        if (is_at(';')) {
            hand_out(coe_piece::kind::comment, end_of_line());
        } else if (has_ended) {
            parse_stray(next);
        } else {
            parse_statement();
        }
    }
}

void coe_parser::parse_statement() {
    const span name = parse_value();
    skip_blanks();
    const bool is_radix = kvr::equal_ignoring_case(name.in(text), radix_setting);
    const bool is_vector = kvr::equal_ignoring_case(name.in(text), vector_name);
    if (!is_at('=') || (!is_radix && !is_vector)) {
        parse_stray(name.offset);
        return;
    }
    ++next;
    skip_blanks();
    if (is_radix) {
        parse_radix(name);
    } else {
        parse_vector(name);
    }
}

void coe_parser::parse_radix(const span& name) {
    sink.take({coe_piece::kind::radix_name, name});
    const span value = parse_value();
    sink.take({coe_piece::kind::radix, value});
    skip_blanks();
    if (is_at(';')) {
        ++next;
    } else {
        sink.take({coe_piece::kind::no_semicolon, value.length != 0 ? value : name});
    }
}

void coe_parser::parse_vector(const span& name) {
    sink.take({coe_piece::kind::vector, name});
    has_ended = true;
    span last = name;
    for (skip_blanks(); !at_end(); skip_blanks()) {
        switch (text[next]) {
        case ';':
            hand_out(coe_piece::kind::end, next + 1);
            return;
        case ',':
            last = {next, 1};
            hand_out(coe_piece::kind::comma, next + 1);
            break;
        default:
            last = parse_value();
            if (last.length == 0) { // "=", which ends a value, is a value here
                last.length = 1;
                ++next;
            }
            sink.take({coe_piece::kind::word, last});
        }
    }
    sink.take({coe_piece::kind::no_semicolon, last});
}

/// Parses the line, or the rest of it, from @p begin on as stray text.
void coe_parser::parse_stray(std::size_t begin) {
    next = begin;
    const std::string_view line = without_blanks_at_end(text.substr(begin, end_of_line() - begin));
    hand_out(has_ended ? coe_piece::kind::after_end : coe_piece::kind::stray, begin + line.size());
}

void coe_parser::skip_blanks() {
    next = std::min(text.find_first_not_of(coe_blanks, next), text.size());
}

std::size_t coe_parser::end_of_line() const noexcept {
    return std::min(text.find_first_of("\r\n", next), text.size());
}

span coe_parser::parse_value() {
    const std::size_t begin = next;
    while (!at_end() && !ends_coe_value[static_cast<unsigned char>(text[next])]) {
        ++next;
    }
    return {begin, next - begin};
}

void coe_parser::hand_out(coe_piece::kind what, std::size_t end) {
    const span where{next, end - next};
    next = end;
    sink.take({what, where});
}

} // namespace kvrimage

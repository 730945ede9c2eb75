#include "kvrimage/formats/memheader/memheader_parser.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/formats/word_digits.h"

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::string_view memheader_byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view memheader_blanks = " \t\v\f";

/// Returns @p of without surrounding blanks.
span trimmed_in(std::string_view text, const span& of) {
    const std::string_view line = of.in(text);
    const std::size_t first = std::min(line.find_first_not_of(memheader_blanks), line.size());
    const std::size_t last = line.find_last_not_of(memheader_blanks) + 1;
    return {of.offset + first, std::max(first, last) - first};
}

/// Parses the address @p digits. Returns 2^64 - 1 if it needs more than 64 bits; nothing if they are invalid.
std::optional<std::uint64_t> memheader_address(std::string_view digits) noexcept {
    constexpr std::uint64_t largest = ~std::uint64_t{0};
    if (digits.empty() || find_bad_digit(digits, radix::hex) != std::string_view::npos) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    for (const char digit : digits) {
        value = value > largest / 16 ? largest : value * 16 + kvr::digit_value(digit);
    }
    return value;
}

} // namespace

memheader_parser::memheader_parser(std::string_view contents, memheader_sink& target)
    : text(contents),
      sink(target),
      next(contents.starts_with(memheader_byte_order_mark) ? memheader_byte_order_mark.size() : 0) {}

void memheader_parser::parse() {
    while (next != text.size()) {
        const std::size_t end = std::min(text.find_first_of("\r\n", next), text.size());
        const span line = trimmed_in(text, {next, end - next});
        next = end + (end != text.size() ? 1 : 0);
        if (line.length == 0) {
            continue;
        }
        if (text[line.offset] == '#') {
            parse_header_line(line);
        } else if (in_data) {
            parse_row(line);
        } else {
            sink.take({memheader_piece::kind::stray_word, line});
        }
    }
}

void memheader_parser::parse_header_line(const span& line) {
    memheader_piece piece{in_data ? memheader_piece::kind::late_setting : memheader_piece::kind::setting,
                          line};
    const span rest{line.offset + 1, line.length - 1};
    const std::uint64_t equals = std::min<std::uint64_t>(rest.in(text).find('='), rest.length);
    piece.name = trimmed_in(text, {rest.offset, equals});
    if (equals != rest.length) {
        piece.value = trimmed_in(text, {rest.offset + equals + 1, rest.length - equals - 1});
    } else if (!in_data && kvr::equal_ignoring_case(piece.name.in(text), "Data")) {
        piece.what = memheader_piece::kind::data;
    }
    if (!in_data && kvr::equal_ignoring_case(piece.name.in(text), "Format")) {
        is_addressed = kvr::equal_ignoring_case(piece.value.in(text), "AddrHex");
    }
    sink.take(piece);
    in_data = in_data || piece.what == memheader_piece::kind::data;
}

void memheader_parser::parse_row(const span& line) {
    const std::size_t end = line.end();
    std::size_t at = is_addressed ? parse_address(line.offset, end) : line.offset;
    for (;;) {
        at = std::min(text.find_first_not_of(memheader_blanks, at), text.size());
        if (at >= end) {
            return;
        }
        memheader_piece piece{memheader_piece::kind::word, {at, end_of_token(at, end) - at}};
        piece.address = address;
        if (address && *address != ~std::uint64_t{0}) {
            ++*address;
        }
        at = piece.where.end();
        sink.take(piece);
    }
}

/// @return the start of the words of the row
std::size_t memheader_parser::parse_address(std::size_t begin, std::size_t line_end) {
    const std::string_view row = text.substr(begin, line_end - begin);
    const std::size_t colon = row.find(':');
    memheader_piece piece{memheader_piece::kind::address,
                          trimmed_in(text, {begin, std::min(colon, row.size())})};
    piece.address = colon != std::string_view::npos ? memheader_address(piece.where.in(text)) : std::nullopt;
    address = piece.address;
    if (!address) {
        piece.what = memheader_piece::kind::bad_address;
        piece.where.length = std::max<std::uint64_t>(piece.where.length, 1);
    }
    sink.take(piece);
    return begin + (colon != std::string_view::npos ? colon + 1 : row.size());
}

std::size_t memheader_parser::end_of_token(std::size_t begin, std::size_t line_end) const noexcept {
    const auto first = text.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto last = text.begin() + static_cast<std::ptrdiff_t>(line_end);
    return begin +
           static_cast<std::size_t>(
               std::find_if(first, last,
                            [](char c) { return memheader_blanks.find(c) != std::string_view::npos; }) -
               first);
}

} // namespace kvrimage

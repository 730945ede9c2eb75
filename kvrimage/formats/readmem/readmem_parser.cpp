#include "kvrimage/formats/readmem/readmem_parser.h"

#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>
#include <limits>

namespace kvrimage {

namespace {

using readmem_kind = readmem_piece::kind;

constexpr std::string_view mark_of_utf8_list = "\xEF\xBB\xBF";

/// How a character ends a token.
enum class ends_readmem_token : std::uint8_t { no, yes, if_comment };

constexpr std::array<ends_readmem_token, 256> readmem_token_ends = [] {
    std::array<ends_readmem_token, 256> ends{};
    for (const char character : std::string_view(" \t\r\n\f@,;#")) {
        ends[static_cast<unsigned char>(character)] = ends_readmem_token::yes;
    }
    for (const char character : std::string_view("/-")) {
        ends[static_cast<unsigned char>(character)] = ends_readmem_token::if_comment;
    }
    return ends;
}();

bool is_readmem_hex(char character) noexcept {
    return kvr::digit_value(character) < 16;
}

bool is_readmem_hex_or_underscore(char character) noexcept {
    return character == '_' || is_readmem_hex(character);
}

bool is_letter_or_digit_of_readmem(char character) noexcept {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

bool has_readmem_prefix(std::string_view token, char lower, char upper) {
    return token.size() > 2 && token[0] == '0' && (token[1] == lower || token[1] == upper);
}

bool are_readmem_digits(std::string_view token, radix digits_radix) {
    return std::ranges::all_of(
        token, [digits_radix](char c) { return c == '_' || is_readmem_digit(c, digits_radix); });
}

/// Returns the length of an apparent prefix of a word.
std::uint32_t readmem_prefix_length(std::string_view token, radix digits_radix) {
    const std::string_view rest = token.substr(std::min<std::size_t>(token.size(), 2));
    if (digits_radix == radix::bin) {
        return has_readmem_prefix(token, 'b', 'B') && are_readmem_digits(rest, digits_radix) ? 2 : 0;
    }
    // "0X" begins a word with a don't-care digit.
    return has_readmem_prefix(token, 'x', 'x') && std::ranges::all_of(rest, is_readmem_hex_or_underscore) ? 2
                                                                                                          : 0;
}

} // namespace

bool is_readmem_digit(char character, radix digits_radix) noexcept {
    const unsigned value = kvr::digit_value(character);
    return value < (digits_radix == radix::bin ? 2U : 16U) || value == kvr::dont_care_digit ||
           is_high_impedance(character);
}

void readmem_parser::parse() {
    while (!at_end()) {
        parse_piece();
    }
}

void readmem_parser::parse_piece() {
    if (next == 0 && text.starts_with(mark_of_utf8_list)) {
        hand_out({readmem_kind::byte_order_mark, {}}, mark_of_utf8_list.size());
        return;
    }
    switch (text[next]) {
    case ' ':
    case '\t':
    case '\r':
    case '\n':
    case '\f':
        hand_out({readmem_kind::blanks, {}},
                 std::min(text.find_first_not_of(readmem_blanks, next), text.size()));
        break;
    case ',':
    case ';':
        hand_out({readmem_kind::separator, {}}, next + 1);
        break;
    case '@':
        parse_address();
        break;
    default:
        if (!comment_begins_at(next)) {
            parse_token();
        } else if (text[next] == '/') {
            parse_slash_comment();
        } else {
            hand_out({readmem_kind::other_comment, {}}, end_of_line(next));
        }
    }
}

void readmem_parser::hand_out(readmem_piece piece, std::size_t end) {
    piece.where = {next, end - next};
    next = end;
    sink.take(piece);
}

void readmem_parser::parse_slash_comment() {
    if (text[next + 1] == '/') {
        hand_out({readmem_kind::line_comment, {}}, end_of_line(next));
        return;
    }
    const std::size_t end = text.find("*/", next + 2);
    const bool is_open = end == std::string_view::npos;
    hand_out({is_open ? readmem_kind::open_comment : readmem_kind::block_comment, {}},
             is_open ? text.size() : end + 2);
}

void readmem_parser::parse_address() {
    readmem_piece piece{readmem_kind::address, {}};
    std::size_t begin = next + 1;
    std::size_t end = end_of_token(begin);
    if (end == begin) {
        const std::size_t spaced = std::min(text.find_first_not_of(" \t", begin), text.size());
        const std::size_t spaced_end = end_of_token(spaced);
        if (spaced_end != spaced &&
            std::ranges::all_of(text.substr(spaced, spaced_end - spaced), is_readmem_hex)) {
            piece.address_fault = readmem_address_fault::blanks;
            begin = spaced;
            end = spaced_end;
        }
    }
    check_address(piece, text.substr(begin, end - begin));
    hand_out(piece, end);
}

void readmem_parser::check_address(readmem_piece& piece, std::string_view digits) const {
    if (has_readmem_prefix(digits, 'x', 'X')) {
        piece.address_fault = readmem_address_fault::prefix;
        digits.remove_prefix(2);
    }
    const bool has_underscores = digits.find('_') != std::string_view::npos;
    if (has_underscores && piece.address_fault == readmem_address_fault::none) {
        piece.address_fault = readmem_address_fault::underscores;
    }
    const bool is_proper = std::ranges::all_of(digits, is_readmem_hex_or_underscore);
    if (!is_proper || digits.empty() || digits.front() == '_') {
        piece.address_fault = readmem_address_fault::syntax;
        return;
    }
    for (const char digit : digits) {
        if (digit != '_') {
            if (piece.address > std::numeric_limits<std::uint64_t>::max() >> 4U) {
                piece.address_fault = readmem_address_fault::outside;
                return;
            }
            piece.address = piece.address << 4U | kvr::digit_value(digit);
        }
    }
}

/// Parses a word or stray characters.
void readmem_parser::parse_token() {
    const std::size_t end = end_of_token(next);
    const std::string_view token = text.substr(next, end - next);
    if (std::ranges::none_of(token, is_letter_or_digit_of_readmem)) {
        hand_out({readmem_kind::stray, {}}, end);
        return;
    }
    readmem_piece piece{readmem_kind::word, {}};
    piece.prefix = readmem_prefix_length(token, digits_are);
    const auto is_part = [this](char c) { return c == '_' || is_readmem_digit(c, digits_are); };
    const auto digits = token.begin() + (digits_are == radix::bin ? piece.prefix : 0);
    const auto first = std::find_if_not(digits, token.end(), is_part);
    const auto last = std::find_if(first, token.end(), is_part);
    piece.fault = {next + static_cast<std::size_t>(first - token.begin()),
                   static_cast<std::size_t>(last - first)};
    hand_out(piece, end);
}

std::size_t readmem_parser::end_of_token(std::size_t begin) const noexcept {
    for (std::size_t end = begin; end < text.size(); ++end) {
        const ends_readmem_token how = readmem_token_ends[static_cast<unsigned char>(text[end])];
        if (how == ends_readmem_token::yes ||
            (how == ends_readmem_token::if_comment && comment_begins_at(end))) {
            return end;
        }
    }
    return text.size();
}

std::size_t readmem_parser::end_of_line(std::size_t begin) const noexcept {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    return text[end - 1] == '\r' ? end - 1 : end; // a comment has other first characters
}

bool readmem_parser::comment_begins_at(std::size_t offset) const noexcept {
    const std::string_view rest = text.substr(offset, 2);
    return rest.starts_with('#') || rest == "//" || rest == "/*" || rest == "--";
}

} // namespace kvrimage

#include "kvrimage/formats/rif/rif_parser.h"

#include "kvr/numeric/digit_value.h"
#include "kvrimage/formats/rif/rif_characters.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

constexpr std::string_view byte_order_mark_bytes = "\xEF\xBB\xBF";

/// How a character ends a token.
enum class token_end : std::uint8_t { no, yes, if_comment };

constexpr std::array<token_end, 256> token_ends = [] {
    std::array<token_end, 256> ends{};
    for (const char character : std::string_view(" \t\r\n@")) {
        ends[static_cast<unsigned char>(character)] = token_end::yes;
    }
    for (const char character : std::string_view("#/-")) {
        ends[static_cast<unsigned char>(character)] = token_end::if_comment;
    }
    return ends;
}();

bool is_hexadecimal(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, is_hex_digit);
}

std::string_view without_prefix(std::string_view digits) {
    const bool has_prefix = digits.starts_with("0x") || digits.starts_with("0X");
    return digits.substr(has_prefix ? 2 : 0);
}

/// Returns the first characters of @p token that are not digits. A letter "U", which the library accepts, is
/// returned separately.
span first_fault(std::string_view token, std::size_t offset) {
    const auto first = std::ranges::find_if_not(token, is_rif_digit);
    auto last = first;
    if (first != token.end() && is_unknown_digit(*first)) {
        ++last;
    } else {
        last =
            std::find_if(first, token.end(), [](char c) { return is_rif_digit(c) || is_unknown_digit(c); });
    }
    return {offset + static_cast<std::uint64_t>(first - token.begin()),
            static_cast<std::uint64_t>(last - first)};
}

} // namespace

void rif_parser::parse() {
    while (!at_end()) {
        parse_line();
    }
}

void rif_parser::parse_line() {
    if (next == 0 && text.starts_with(byte_order_mark_bytes)) {
        hand_out({rif_piece::kind::byte_order_mark, {}}, byte_order_mark_bytes.size());
    }
    while (!at_end() && !parse_line_end()) {
        switch (text[next]) {
        case ' ':
            parse_blanks(' ', rif_piece::kind::blanks);
            break;
        case '\t':
            parse_blanks('\t', rif_piece::kind::tabs);
            break;
        case '@':
            parse_address();
            break;
        default:
            if (comment_begins_at(next)) {
                parse_comment();
            } else {
                parse_token();
            }
        }
    }
}

void rif_parser::hand_out(rif_piece piece, std::size_t end) {
    piece.where = {next, end - next};
    next = end;
    sink.take(piece);
}

/// Returns false if no line ends here.
bool rif_parser::parse_line_end() {
    if (text[next] == '\n') {
        hand_out({rif_piece::kind::line_end, {}}, next + 1);
        return true;
    }
    if (text[next] != '\r') {
        return false;
    }
    const bool has_line_feed = text.substr(next + 1).starts_with('\n');
    hand_out({has_line_feed ? rif_piece::kind::line_end : rif_piece::kind::carriage_return, {}},
             next + (has_line_feed ? 2 : 1));
    return true;
}

void rif_parser::parse_blanks(char blank, rif_piece::kind what) {
    hand_out({what, {}}, std::min(text.find_first_not_of(blank, next), text.size()));
}

void rif_parser::parse_comment() {
    hand_out({rif_piece::kind::comment, {}}, end_of_line(next));
}

void rif_parser::parse_address() {
    rif_piece piece{rif_piece::kind::address, {}};
    std::size_t end = end_of_token(next + 1);
    piece.digits = {next + 1, end - next - 1};
    if (piece.digits.length == 0) {
        const std::size_t digits = std::min(text.find_first_not_of(" \t", end), text.size());
        if (const std::size_t spaced_end = end_of_spaced_address(digits)) {
            piece.address_fault = rif_address_fault::spelling;
            piece.digits = {digits, spaced_end - digits};
            end = spaced_end;
        }
    }
    check_address(piece);
    address = piece.address;
    hand_out(piece, end);
}

/// Returns the end of the digits at @p begin if only blanks and a comment follow them on their line; else 0.
std::size_t rif_parser::end_of_spaced_address(std::size_t begin) const noexcept {
    const std::size_t end = end_of_token(begin);
    const std::size_t after = std::min(text.find_first_not_of(" \t", end), text.size());
    const bool alone =
        after == text.size() || text[after] == '\n' || text[after] == '\r' || comment_begins_at(after);
    return alone && is_hexadecimal(without_prefix(text.substr(begin, end - begin))) ? end : 0;
}

void rif_parser::check_address(rif_piece& piece) {
    const std::string_view digits = without_prefix(piece.digits.in(text));
    if (digits.size() != piece.digits.length) {
        piece.address_fault = rif_address_fault::spelling;
        piece.digits = {piece.digits.end() - digits.size(), digits.size()};
    }
    if (!is_hexadecimal(digits)) {
        piece.address_fault = rif_address_fault::syntax;
        return;
    }
    std::uint64_t value = 0;
    for (const char digit : digits) {
        value = std::min(value * 16 + kvr::digit_value(digit), highest_rif_address + 1);
    }
    if (value > highest_rif_address) {
        piece.address_fault = rif_address_fault::outside;
    } else {
        piece.address = value;
    }
}

/// Parses a word or stray characters.
void rif_parser::parse_token() {
    const std::size_t end = end_of_token(next);
    const std::string_view token = text.substr(next, end - next);
    if (std::ranges::none_of(token, is_letter_or_digit)) {
        hand_out({rif_piece::kind::stray, {}}, end);
        return;
    }
    rif_piece piece{rif_piece::kind::word, {}};
    piece.fault = first_fault(token, next);
    piece.address = address;
    address += address != no_rif_address ? 1 : 0;
    hand_out(piece, end);
}

std::size_t rif_parser::end_of_token(std::size_t begin) const noexcept {
    for (std::size_t end = begin; end < text.size(); ++end) {
        const token_end how = token_ends[static_cast<unsigned char>(text[end])];
        if (how == token_end::yes || (how == token_end::if_comment && comment_begins_at(end))) {
            return end;
        }
    }
    return text.size();
}

std::size_t rif_parser::end_of_line(std::size_t begin) const noexcept {
    return std::min(text.find_first_of("\r\n", begin), text.size());
}

bool rif_parser::comment_begins_at(std::size_t offset) const noexcept {
    const char first = text[offset];
    return first == '#' ||
           ((first == '/' || first == '-') && offset + 1 < text.size() && text[offset + 1] == first);
}

} // namespace kvrimage

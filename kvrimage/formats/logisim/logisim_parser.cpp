#include "kvrimage/formats/logisim/logisim_parser.h"

#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

constexpr std::string_view logisim_byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view blanks_in_logisim = " \t";

constexpr std::array<bool, 256> ends_logisim_token = [] {
    std::array<bool, 256> ends{};
    for (const char character : std::string_view(" \t\r\n#")) {
        ends[static_cast<unsigned char>(character)] = true;
    }
    return ends;
}();

/// Returns the value of @p digits in @p base, or 2^64 - 1 if it needs more than 64 bits; nothing if they are
/// empty or invalid.
std::optional<std::uint64_t> logisim_number(std::string_view digits, unsigned base) noexcept {
    constexpr std::uint64_t largest = ~std::uint64_t{0};
    std::uint64_t value = 0;
    for (const char digit : digits) {
        const unsigned worth = kvr::digit_value(digit);
        if (worth >= base) {
            return std::nullopt;
        }
        value = value > (largest - worth) / base ? largest : value * base + worth;
    }
    return digits.empty() ? std::nullopt : std::optional(value);
}

} // namespace

void logisim_parser::parse() {
    next = text.starts_with(logisim_byte_order_mark) ? logisim_byte_order_mark.size() : 0;
    const span header{next, end_of_line() - next};
    next = header.end();
    const logisim_variant* const variant = logisim_variant_of(header.in(text));
    sink.take({logisim_piece::kind::header, header});
    if (variant == nullptr) {
        return;
    }
    is_addressed = variant->is_addressed;
    while (next != text.size()) {
        parse_line();
    }
}

void logisim_parser::parse_line() {
    skip_blanks();
    bool needs_address = is_addressed;
    while (!at_line_end()) {
        if (text[next] == '#') {
            const std::size_t end = end_of_line();
            sink.take({logisim_piece::kind::comment, {next, end - next}});
            next = end;
        } else if (needs_address) {
            parse_address();
            needs_address = false;
        } else {
            parse_token();
        }
        skip_blanks();
    }
    next = std::min(next + 1, text.size());
}

void logisim_parser::parse_address() {
    const std::string_view token = text.substr(next, end_of_token() - next);
    const std::size_t colon = std::min(token.find(':'), token.size());
    logisim_piece piece{logisim_piece::kind::address, {next, colon}};
    piece.address = colon != token.size() ? logisim_number(token.substr(0, colon), 16) : std::nullopt;
    address = piece.address;
    if (!address) {
        piece.what = logisim_piece::kind::bad_address;
        piece.where.length = std::max<std::size_t>(colon, 1);
    }
    next += std::min(colon + 1, token.size());
    sink.take(piece);
}

/// Parses a word or a run.
void logisim_parser::parse_token() {
    logisim_piece piece{logisim_piece::kind::word, {next, end_of_token() - next}};
    piece.digits = piece.where;
    piece.address = address;
    const std::size_t star = piece.where.in(text).find('*');
    if (star != std::string_view::npos && !parse_count(piece, star)) {
        piece.what = logisim_piece::kind::bad_run;
    }
    next = piece.where.end();
    if (address) {
        const std::uint64_t last = piece.last_address();
        address = last + (last != ~std::uint64_t{0} ? 1 : 0);
    }
    sink.take(piece);
}

/// Returns false unless a count precedes the "*" at @p star and a word follows it.
bool logisim_parser::parse_count(logisim_piece& piece, std::size_t star) const {
    const auto count = logisim_number(piece.where.in(text).substr(0, star), 10);
    piece.digits = {piece.where.offset + star + 1, piece.where.length - star - 1};
    if (!count || *count == 0 || piece.digits.length == 0) {
        return false;
    }
    piece.count = *count;
    return true;
}

void logisim_parser::skip_blanks() noexcept {
    next = std::min(text.find_first_not_of(blanks_in_logisim, next), text.size());
}

std::size_t logisim_parser::end_of_token() const noexcept {
    std::size_t end = next;
    while (end != text.size() && !ends_logisim_token[static_cast<unsigned char>(text[end])]) {
        ++end;
    }
    return end;
}

std::size_t logisim_parser::end_of_line() const noexcept {
    return std::min(text.find_first_of("\r\n", next), text.size());
}

} // namespace kvrimage

#include "kvrimage/formats/titxt/titxt_parser.h"

#include "kvr/numeric/digit_value.h"
#include "kvrimage/formats/titxt/fast_titxt_bytes.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <charconv>

namespace kvrimage {

namespace {

constexpr std::string_view titxt_blanks = " \t\n\v\f\r";

} // namespace

bool titxt_parser::next() {
    while (position < contents.size() && is_titxt_blank(contents[position])) {
        ++position;
    }
    if (position == contents.size()) {
        return false;
    }
    if (!parse_bytes()) {
        parse_other();
    }
    return true;
}

/// Pairs of digits, each before a blank or the end.
bool titxt_parser::parse_bytes() {
    const char* const text = contents.data();
    const std::size_t size = contents.size();
    std::size_t count = 0;
    std::size_t at = position;
    std::size_t end = position;
    while (count + 8 <= decoded.size() && at + 16 <= size &&
           take_five_titxt_bytes(text + at, decoded.data() + count)) {
        count += 5;
        at += 15;
        end = at - 1;
    }
    while (at < size && is_titxt_blank(text[at])) {
        ++at;
    }
    while (count < decoded.size() && at + 2 <= size) {
        const unsigned high = kvr::digit_value(text[at]);
        const unsigned low = kvr::digit_value(text[at + 1]);
        const bool is_alone = at + 2 == size || is_titxt_blank(text[at + 2]);
        if ((high | low) > 0xFU || !is_alone) {
            break;
        }
        decoded[count++] = static_cast<char>(high << bits_per_hex_digit | low);
        end = at + 2;
        at += 3;
        while (at < size && is_titxt_blank(text[at])) {
            ++at;
        }
    }
    current.what = titxt_piece::kind::bytes;
    current.where = {position, end - position};
    current.bytes = {decoded.data(), count};
    position = end;
    return count != 0;
}

void titxt_parser::parse_other() {
    const std::size_t end = std::min(contents.find_first_of(titxt_blanks, position), contents.size());
    current.where = {position, std::max<std::size_t>(end - position, 1)};
    position += current.where.length;
    const std::string_view text = current.where.in(contents);
    if (text.front() == '@') {
        current.what =
            parse_address(text.substr(1)) ? titxt_piece::kind::address : titxt_piece::kind::bad_address;
    } else {
        current.what = text == "q" || text == "Q" ? titxt_piece::kind::end : titxt_piece::kind::bad_byte;
    }
}

bool titxt_parser::parse_address(std::string_view digits) {
    constexpr int base = 16;
    const char* const last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, current.address, base);
    return error == std::errc() && end == last;
}

span span_of_titxt_byte(std::string_view contents, const titxt_piece& piece, std::uint64_t index) {
    const std::string_view text = piece.where.in(contents);
    std::size_t at = 0;
    for (; index > 0; --index) {
        at = text.find_first_not_of(titxt_blanks, at + 2);
    }
    return {piece.where.offset + at, 2};
}

} // namespace kvrimage

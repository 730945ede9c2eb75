#include "kvrimage/formats/srec/srec_parser.h"

#include "kvr/numeric/digit_value.h"
#include "kvrimage/bytes/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>

namespace kvrimage {

namespace {

constexpr std::size_t srec_none = std::string_view::npos;
constexpr std::string_view srec_blanks = " \t\r";
constexpr std::size_t digits_from = 2; ///< after "S" and the type

bool is_decimal_digit(char character) {
    return character >= '0' && character <= '9';
}

/// What the two hexadecimal digits at @p digits are worth; more than 255 when one of them is none.
unsigned value_of_pair(const char* digits) {
    constexpr unsigned no_byte = 256;
    const unsigned high = kvr::digit_value(digits[0]);
    const unsigned low = kvr::digit_value(digits[1]);
    return (high | low) < 16 ? high << bits_per_hex_digit | low : no_byte;
}

/// True when the sizes of a record whose count is @p count are those of its type.
bool fits_type(unsigned type, std::size_t count) {
    const std::size_t least = srec_address_bytes[type] + 1;
    return type <= 3 ? count >= least : count == least;
}

} // namespace

unsigned srec_checksum(std::string_view bytes) noexcept {
    unsigned sum = 0;
    for (const char byte : bytes) {
        sum += static_cast<unsigned char>(byte);
    }
    return ~sum & 0xFFU;
}

srec_parser::srec_parser(std::string_view of) : contents(of) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    position = contents.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
}

bool srec_parser::next() {
    if (position >= contents.size()) {
        return false;
    }
    if (take_plain_record()) {
        return true;
    }
    const std::size_t end = std::min(contents.find('\n', position), contents.size());
    current = {};
    current.whole = {position, end - position};
    position = std::min(end + 1, contents.size());
    find_parts();
    return true;
}

/// What nearly every line is: a record without a fault, and nothing else before LF or CR LF.
bool srec_parser::take_plain_record() {
    constexpr std::size_t before_bytes = 4;
    const std::string_view text = contents.substr(position);
    if (text.size() < before_bytes || text[0] != 'S' || !is_decimal_digit(text[1])) {
        return false;
    }
    const unsigned count = value_of_pair(&text[digits_from]);
    if (count >= bytes.size()) { // it is no number
        return false;
    }
    const std::size_t length = before_bytes + 2 * std::size_t{count};
    const std::size_t line_end = text.size() > length && text[length] == '\r' ? length + 1 : length;
    if (text.size() <= line_end || text[line_end] != '\n') {
        return false;
    }
    const std::string_view digits = text.substr(digits_from, length - digits_from);
    current.type = static_cast<unsigned>(text[1] - '0');
    if (current.type == 4 || !decode_hex(digits, bytes.data()) || !fits_type(current.type, count) ||
        !take_fields(digits)) {
        return false;
    }
    current.whole = {position, line_end};
    current.content = {position, length};
    current.what = srec_line::kind::record;
    current.fault = srec_fault::none;
    position += line_end + 1;
    return true;
}

void srec_parser::find_parts() {
    const std::string_view text = current.whole.in(contents);
    const std::size_t first = text.find_first_not_of(srec_blanks);
    if (first == srec_none) {
        return;
    }
    const std::size_t last = text.find_last_not_of(srec_blanks);
    current.content = {current.whole.offset + first, last - first + 1};
    const std::string_view content = current.content.in(contents);
    const bool is_record =
        content.size() >= 2 && (content[0] == 'S' || content[0] == 's') && is_decimal_digit(content[1]);
    current.what = is_record ? srec_line::kind::record : srec_line::kind::text;
    if (is_record) {
        parse_record();
    }
}

void srec_parser::parse_record() {
    const std::string_view content = current.content.in(contents);
    current.type = static_cast<unsigned>(content[1] - '0');
    find_fault(content.substr(digits_from));
    if (content[0] == 's' && current.fault == srec_fault::none) {
        set_fault(srec_fault::letter, 0, 1);
    }
}

void srec_parser::find_fault(std::string_view digits) {
    if (const std::size_t bad = digits.find_first_not_of(hex_digits); bad != srec_none) {
        set_fault(srec_fault::bad_digit, digits_from + bad, 1);
        return;
    }
    if (digits.size() < 2) {
        set_fault(srec_fault::too_short, 0, digits_from + digits.size());
        return;
    }
    const std::size_t count = value_of_pair(digits.data());
    if (digits.size() != 2 + 2 * count) {
        set_fault(srec_fault::count, digits_from, 2);
    } else if (current.type == 4) {
        set_fault(srec_fault::type, 0, digits_from);
    } else if (!fits_type(current.type, count)) {
        set_fault(srec_fault::fields, digits_from, 2);
    } else {
        static_cast<void>(decode_hex(digits, bytes.data())); // they are digits
        if (!take_fields(digits)) {
            set_fault(srec_fault::checksum, digits_from + digits.size() - 2, 2);
        }
    }
}

/// Takes address and data from the bytes of @p digits, which were decoded; false for a wrong checksum.
bool srec_parser::take_fields(std::string_view digits) {
    const std::string_view all(bytes.data(), digits.size() / 2);
    current.address = 0;
    const std::size_t address_bytes = srec_address_bytes[current.type];
    for (const char byte : all.substr(1, address_bytes)) {
        current.address = current.address << bits_per_byte | static_cast<unsigned char>(byte);
    }
    current.data = all.substr(1 + address_bytes, all.size() - address_bytes - 2);
    return srec_checksum(all.substr(0, all.size() - 1)) == static_cast<unsigned char>(all.back());
}

void srec_parser::set_fault(srec_fault what, std::size_t first, std::size_t count) {
    current.fault = what;
    current.fault_place = {current.content.offset + first, count};
}

} // namespace kvrimage

#include "kvrimage/formats/srec/srec_parser.h"

#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/number_of_bytes.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

namespace {

constexpr std::size_t srec_none = std::string_view::npos;
constexpr std::string_view srec_blanks = " \t\r";
constexpr std::string_view mark_before_records = "\xEF\xBB\xBF"; ///< the byte-order mark
constexpr std::size_t digits_from = 2;                           ///< after "S" and the type

bool is_decimal_digit(char character) {
    return character >= '0' && character <= '9';
}

/// Returns whether @p count is valid for records of @p type.
bool fits_type(unsigned type, std::size_t count) {
    const std::size_t least = srec_address_bytes[type] + 1;
    return type <= 3 ? count >= least : count == least;
}

} // namespace

unsigned srec_checksum(std::string_view bytes) noexcept {
    return ~sum_of_bytes(bytes) & 0xFFU;
}

srec_parser::srec_parser(std::string_view of)
    : contents(of),
      lines(of, of.starts_with(mark_before_records) ? mark_before_records.size() : 0) {}

bool srec_parser::next() {
    current = {};
    if (!lines.next(current.whole)) {
        return false;
    }
    find_parts();
    return true;
}

void srec_parser::find_parts() {
    current.content = lines.without_blanks(current.whole, srec_blanks);
    if (current.content.length == 0) {
        return;
    }
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
    const std::size_t count = hex_value(digits.substr(0, 2));
    if (digits.size() != 2 + 2 * count) {
        set_fault(srec_fault::count, digits_from, 2);
    } else if (current.type == 4) {
        set_fault(srec_fault::type, 0, digits_from);
    } else if (!fits_type(current.type, count)) {
        set_fault(srec_fault::fields, digits_from, 2);
    } else {
        static_cast<void>(decode_hex(digits, bytes.data())); // the characters are digits
        if (!parse_fields(digits)) {
            set_fault(srec_fault::checksum, digits_from + digits.size() - 2, 2);
        }
    }
}

/// Sets address and data from the decoded bytes of @p digits. Returns false for a wrong checksum.
bool srec_parser::parse_fields(std::string_view digits) {
    const std::string_view all(bytes.data(), digits.size() / 2);
    const std::size_t address_bytes = srec_address_bytes[current.type];
    current.address =
        static_cast<std::uint32_t>(number_of_bytes(all.substr(1, address_bytes), byte_order::big));
    current.data = all.substr(1 + address_bytes, all.size() - address_bytes - 2);
    return srec_checksum(all.substr(0, all.size() - 1)) == static_cast<unsigned char>(all.back());
}

void srec_parser::set_fault(srec_fault what, std::size_t first, std::size_t count) {
    current.fault = what;
    current.fault_place = {current.content.offset + first, count};
}

} // namespace kvrimage

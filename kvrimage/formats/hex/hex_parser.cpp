#include "kvrimage/formats/hex/hex_parser.h"

#include "kvrimage/image/hex_text.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

constexpr std::size_t none = std::string_view::npos;
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

bool is_hex_blank(char character) {
    return hex_blanks.find(character) != none;
}

/// Returns @p text without blanks: @p text itself or a view of @p buffer.
std::string_view digits_of(std::string_view text, std::string& buffer) {
    if (text.find_first_of(hex_blanks) == none) {
        return text;
    }
    buffer.clear();
    std::ranges::copy_if(text, std::back_inserter(buffer), [](char c) { return !is_hex_blank(c); });
    return buffer;
}

bool are_all_hex(std::string_view digits) {
    return digits.find_first_not_of(hex_digits) == none;
}

/// Returns whether @p digits have the stated length and a valid checksum.
bool is_complete_record(std::string_view digits) {
    return digits.size() >= hex_record::shortest && are_all_hex(digits) &&
           digits.size() == hex_record::shortest + std::size_t{2} * hex_value(digits.substr(0, 2)) &&
           (sum_of_hex_bytes(digits) & 0xFFU) == 0;
}

bool begins_as_comment(std::string_view content) {
    constexpr std::array<std::string_view, 4> comment_marks = {";", "#", "//", "--"};
    return std::ranges::any_of(comment_marks,
                               [content](std::string_view each) { return content.starts_with(each); });
}

hex_record_type type_of(std::string_view digits) {
    const std::uint32_t type = hex_value(digits);
    return type < static_cast<std::uint32_t>(hex_record_type::unknown) ? static_cast<hex_record_type>(type)
                                                                       : hex_record_type::unknown;
}

} // namespace

std::uint32_t sum_of_hex_bytes(std::string_view digits) noexcept {
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
        sum += hex_value(digits.substr(at, 2));
    }
    return sum;
}

std::string hex_checksum(std::string_view fields) {
    return fmt::format("{:02X}", (0U - sum_of_hex_bytes(fields)) & 0xFFU);
}

span hex_record::span_of(std::string_view contents, std::size_t first, std::size_t count) const {
    if (!has_blanks()) {
        return {where.offset + 1 + first, count};
    }
    const std::string_view text = where.in(contents);
    std::size_t begin = 0;
    for (std::size_t number = 0; number <= first; ++number) {
        begin = text.find_first_not_of(hex_blanks, begin + 1);
    }
    std::size_t last = begin;
    for (std::size_t number = 1; number < count; ++number) {
        last = text.find_first_not_of(hex_blanks, last + 1);
    }
    return {where.offset + begin, last - begin + 1};
}

bool hex_parser::next() {
    current = {};
    if (!lines.next(current.whole)) {
        return false;
    }
    find_parts();
    return true;
}

void hex_parser::find_parts() {
    current.content = lines.without_blanks(current.whole, hex_blanks);
    if (current.content.length == 0) {
        return;
    }
    current.what = hex_line::kind::text;
    const std::string_view content = current.content.in(contents);
    if (content.starts_with(':')) {
        parse_record(0);
        return;
    }
    if (content.starts_with(byte_order_mark) && content.substr(byte_order_mark.size()).starts_with(':')) {
        parse_record(byte_order_mark.size());
        return;
    }
    const std::size_t colon = content.rfind(':');
    const std::string_view digits = digits_of(content.substr(colon == none ? 0 : colon + 1), buffer);
    if (colon == none) {
        current.lacks_colon = is_complete_record(digits);
        if (current.lacks_colon) {
            current.record.digits = digits;
            set_fields();
        }
    } else if (digits.size() >= hex_record::header && are_all_hex(digits)) {
        current.hides_record = begins_as_comment(content);
        if (!current.hides_record) {
            parse_record(colon);
        }
    }
}

void hex_parser::parse_record(std::size_t colon) {
    current.what = hex_line::kind::record;
    split_record(colon);
    find_fault();
}

/// @param colon index of the colon in the content
void hex_parser::split_record(std::size_t colon) {
    current.before = {current.content.offset, colon};
    hex_record& record = current.record;
    record.where = {current.content.offset + colon, current.content.length - colon};
    record.digits = digits_of(record.where.in(contents).substr(1), buffer);
    set_fields();
}

/// Sets the fields of the header of a record with these digits.
void hex_parser::set_fields() {
    hex_record& record = current.record;
    if (record.digits.size() >= hex_record::header &&
        are_all_hex(record.digits.substr(0, hex_record::header))) {
        record.data_bytes = hex_value(record.digits.substr(0, 2));
        record.address = hex_value(record.digits.substr(2, 4));
        record.type = type_of(record.digits.substr(6, 2));
    }
}

void hex_parser::find_fault() {
    const hex_record& record = current.record;
    const std::string_view digits = record.digits;
    if (const std::size_t bad = digits.find_first_not_of(hex_digits); bad != none) {
        const bool is_second = digits[bad] == ':' && is_complete_record(digits.substr(0, bad));
        set_fault(is_second ? hex_fault::second_record : hex_fault::bad_digit, bad, 1);
    } else if (digits.size() < hex_record::header) {
        current.fault = hex_fault::too_short;
        current.fault_place = record.where;
    } else if (digits.size() != hex_record::shortest + std::size_t{2} * record.data_bytes) {
        find_length_fault();
    } else if ((sum_of_hex_bytes(digits) & 0xFFU) != 0) {
        set_fault(hex_fault::checksum, digits.size() - 2, 2);
    } else if (record.type == hex_record_type::unknown) {
        set_fault(hex_fault::type, 6, 2);
    } else if (sets_offset(record.type) && record.data_bytes != 2) {
        set_fault(hex_fault::address_length, 0, 2);
    }
}

void hex_parser::find_length_fault() {
    const hex_record& record = current.record;
    if (record.data_bytes == 0 && record.digits.size() < hex_record::shortest) {
        current.fault = hex_fault::no_checksum;
        current.fault_place = {record.where.end(), 0};
    } else {
        set_fault(hex_fault::length, 0, 2);
    }
}

void hex_parser::set_fault(hex_fault what, std::size_t first, std::size_t count) {
    current.fault = what;
    current.fault_place = current.record.span_of(contents, first, count);
}

} // namespace kvrimage

#include "kvr/memory/hex_record.h"

#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/scanned_number.h"

#include <algorithm>

namespace kvr {

namespace {

constexpr std::size_t length_digits = 2;
constexpr std::size_t address_digits = 4;
constexpr std::size_t type_digits = 2;
constexpr std::size_t checksum_digits = 2;
constexpr std::size_t header_digits = length_digits + address_digits + type_digits;

std::uint32_t sum_of_bytes_of(std::uint32_t value) noexcept {
    return (value >> 24) + ((value >> 16) & 0xFF) + ((value >> 8) & 0xFF) + (value & 0xFF);
}

hex_record_type type_of(std::string_view type) noexcept {
    if (type[0] != '0' || type[1] < '0' || type[1] > '5') {
        return hex_record_type::unknown;
    }
    return static_cast<hex_record_type>(type[1] - '0');
}

/// Adds the bytes of @p digits, an even number of characters, to @p sum. False when one of them is no
/// hexadecimal digit.
bool add_plain_bytes(std::string_view digits, std::uint32_t& sum) noexcept {
    std::uint32_t seen = 0;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const std::uint32_t high = digit_value(digits[i]);
        const std::uint32_t low = digit_value(digits[i + 1]);
        seen |= high | low;
        sum += high * 16 + low;
    }
    return seen < 16;
}

std::uint32_t plain_number(std::string_view digits) noexcept {
    std::uint32_t value = 0;
    for (const char digit : digits) {
        value = value * 16 + digit_value(digit);
    }
    return value;
}

/// Length of the line end at the front of @p text: 1 for LF, 2 for CR LF, 0 for anything else.
std::size_t line_end_size(std::string_view text) noexcept {
    if (text.starts_with('\n')) {
        return 1;
    }
    return text.starts_with("\r\n") ? 2 : 0;
}

} // namespace

std::uint32_t hex_number(std::string_view text) noexcept {
    return scan_number(text, 16).as_strtoul();
}

std::uint32_t sum_of_bytes(std::string_view text) noexcept {
    constexpr std::size_t piece_size = 8;
    std::uint32_t sum = 0;
    while (!text.empty()) {
        sum += sum_of_bytes_of(hex_number(text.substr(0, piece_size)));
        text.remove_prefix(std::min(piece_size, text.size()));
    }
    return sum;
}

std::string_view without_blanks(std::string_view line, std::string& buffer) {
    if (line.find_first_of(hex_blanks) == line.npos) {
        return line;
    }
    buffer.clear();
    for (const char character : line) {
        if (hex_blanks.find(character) == hex_blanks.npos) {
            buffer.push_back(character);
        }
    }
    return buffer;
}

std::variant<hex_record, hex_record_fault> split_hex_record(std::string_view line) {
    hex_record record;
    record.text = line.substr(1);
    if (record.text.size() < header_digits) {
        return hex_record_fault{fault_code::record_too_short, 0, line.size()};
    }
    record.data_bytes = hex_number(record.length());
    const std::uint64_t digits_to_come = std::uint64_t{2} * record.data_bytes + checksum_digits;
    if (record.text.size() - header_digits != digits_to_come) {
        return hex_record_fault{fault_code::record_length, 1, length_digits};
    }
    record.word_address = hex_number(record.address());
    record.kind = type_of(record.type());
    return record;
}

bool has_valid_checksum(const hex_record& record) noexcept {
    return (sum_of_bytes(record.text) & 0xFF) == 0;
}

std::optional<hex_record_fault> check_hex_record_type(const hex_record& record) noexcept {
    if (record.kind == hex_record_type::unknown) {
        return hex_record_fault{fault_code::record_type, 1 + length_digits + address_digits, type_digits};
    }
    return std::nullopt;
}

std::optional<hex_record_fault> check_hex_record(const hex_record& record) noexcept {
    if (!has_valid_checksum(record)) {
        return hex_record_fault{fault_code::checksum, 1 + record.text.size() - checksum_digits,
                                checksum_digits};
    }
    return check_hex_record_type(record);
}

std::size_t take_plain_hex_record(std::string_view lines, hex_record& record) noexcept {
    constexpr std::size_t shortest = 1 + header_digits + checksum_digits;
    if (lines.size() < shortest || lines.front() != ':') {
        return 0;
    }
    const std::uint32_t high = digit_value(lines[1]);
    const std::uint32_t low = digit_value(lines[2]);
    const std::size_t digits = shortest - 1 + 2 * (high * std::size_t{16} + low);
    if ((high | low) > 15 || lines.size() <= digits) {
        return 0;
    }
    const std::string_view text(lines.data() + 1, digits);
    std::uint32_t sum = 0;
    if (!add_plain_bytes(text, sum) || (sum & 0xFF) != 0) {
        return 0;
    }
    const std::size_t line_end = line_end_size(lines.substr(1 + digits));
    const hex_record_type kind = type_of(text.substr(length_digits + address_digits));
    if (line_end == 0 || kind == hex_record_type::unknown) {
        return 0;
    }
    record = {text, high * 16 + low, plain_number(text.substr(length_digits, address_digits)), kind};
    return 1 + digits + line_end;
}

} // namespace kvr

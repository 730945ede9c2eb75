#include "kvr/memory/hex/hex_record.h"

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

} // namespace kvr

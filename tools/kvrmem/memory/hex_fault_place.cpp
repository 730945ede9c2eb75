#include "tools/kvrmem/memory/hex_fault_place.h"

#include "kvr/memory/hex/hex_record.h"
#include "tools/kvrmem/memory/word_text.h"

namespace kvrmem {

namespace {

kvr::read_fault placed_at(const kvr::read_fault& fault, std::size_t index) {
    return {fault.code, fault.line, static_cast<std::uint32_t>(index + 1), 1};
}

} // namespace

std::size_t first_no_digit(std::string_view record) {
    return record.find_first_not_of(hex_digits, 1);
}

std::size_t missing_checksum_digits(std::string_view record) {
    constexpr std::size_t whole = 11; // colon, length, address, type, checksum
    const bool has_no_data = kvr::hex_number(record.substr(1, 2)) == 0;
    return has_no_data && record.size() < whole ? whole - record.size() : 0;
}

kvr::read_fault exact_hex_fault(const kvr::read_fault& fault, std::string_view record,
                                std::string_view line) {
    if (fault.code == kvr::fault_code::checksum) {
        const std::size_t bad = first_no_digit(record);
        if (bad != std::string_view::npos) {
            // No blank is at fault, and the first one of that character is it.
            return placed_at(fault, line.find(record[bad], line.find(':') + 1));
        }
    } else if (fault.code == kvr::fault_code::record_length && missing_checksum_digits(record) != 0) {
        return placed_at(fault, line.find_last_not_of(kvr::hex_blanks) + 1);
    }
    return fault;
}

} // namespace kvrmem

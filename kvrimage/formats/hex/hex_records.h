#pragma once

#include "kvr/memory/hex/fast_hex_record.h"
#include "kvrimage/formats/hex/hex_parser.h"
#include "kvrimage/image/hex_text.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The offset that is added to the addresses of records, in words or bytes. Each extended address record
/// replaces the previous offset, also one of the other type.
class hex_offset {
public:
    void take(hex_record_type type, std::string_view data) {
        is_segment = type == hex_record_type::segment_address;
        offset = std::uint64_t{hex_value(data)} << (is_segment ? segment_shift : linear_shift);
    }
    [[nodiscard]] std::uint64_t value() const noexcept { return offset; }
    [[nodiscard]] bool counts_segments() const noexcept { return is_segment; }

private:
    static constexpr unsigned segment_shift = 4;
    static constexpr unsigned linear_shift = 16;
    std::uint64_t offset = 0;
    bool is_segment = false;
};

/// Passes the plain data records at the start of the remaining lines of @p parser to @p take (data digits,
/// address field, bytes, line). A plain record has a line of its own and neither blanks nor faults. If
/// @p take returns false, the parser gets that record. The parser would give the same records.
template <class Take>
void for_each_plain_record(hex_parser& parser, Take&& take) {
    const std::string_view lines = parser.to_come().rest();
    std::size_t done = 0;
    std::uint32_t expected_bytes = 0;
    kvr::hex_record record;
    while (true) {
        const std::size_t size = kvr::parse_fast_hex_record(lines.substr(done), record, expected_bytes);
        if (size == 0 || record.kind != kvr::hex_record_type::data ||
            !take(record, span{parser.to_come().offset() + done, record.text.size() + 1})) {
            break;
        }
        expected_bytes = record.data_bytes;
        done += size;
    }
    parser.to_come().skip(done);
}

/// A data record with its absolute address.
struct hex_data {
    std::uint64_t address; ///< of the first cell
    std::uint32_t bytes;
    std::string_view digits; ///< of the data
    const hex_line* line;    ///< null for a plain record, whose digits lie in the contents
    span where;

    /// Returns whether its digits are faulty, although their number is right.
    [[nodiscard]] bool is_in_doubt() const noexcept {
        return line != nullptr && line->fault != hex_fault::none;
    }
    /// Returns the place of @p count data digits from index @p first on.
    [[nodiscard]] span span_of(std::string_view contents, std::size_t first, std::size_t count) const {
        const std::size_t index = hex_record::header + first;
        return line != nullptr ? line->record.span_of(contents, index, count)
                               : span{where.offset + 1 + index, count};
    }
};

/// Returns whether the line is a data record with known addresses, even if its digits or checksum are faulty.
[[nodiscard]] inline bool has_known_addresses(const hex_line& line) {
    const hex_record& record = line.record;
    return (line.fault == hex_fault::checksum || line.fault == hex_fault::bad_digit) &&
           record.digits.size() == hex_record::shortest + std::size_t{2} * record.data_bytes;
}

/// Calls @p take with each data record before the end record, including those with ambiguous digits. Other
/// faulty records are skipped. Returns the parser at the end record, or at the last line if there is none.
/// @param offset must be 0 at first; holds the last offset afterwards
template <class Take>
hex_parser for_each_data_record(std::string_view contents, hex_offset& offset, Take&& take) {
    hex_parser parser(contents);
    while (true) {
        for_each_plain_record(parser, [&](const kvr::hex_record& plain, const span& where) {
            take(hex_data{offset.value() + plain.word_address, plain.data_bytes, plain.data(), nullptr,
                          where});
            return true;
        });
        if (!parser.next()) {
            return parser;
        }
        const hex_line& line = parser.line();
        const hex_record& record = line.record;
        const bool is_right = line.what == hex_line::kind::record && line.fault == hex_fault::none;
        if (is_right && record.type == hex_record_type::end) {
            return parser;
        }
        if (is_right && sets_offset(record.type)) {
            offset.take(record.type, record.data());
        } else if (record.type == hex_record_type::data && (is_right || has_known_addresses(line))) {
            take(hex_data{offset.value() + record.address, record.data_bytes, record.data(), &line,
                          record.where});
        }
    }
}

} // namespace kvrimage

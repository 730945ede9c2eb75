#pragma once

#include "kvr/memory/hex/fast_hex_record.h"
#include "kvrimage/formats/hex/hex_parser.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The word or byte address to which the addresses of records are relative. Each extended address record replaces what the
/// one before it has set, also one of the other type.
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

/// Takes plain data records, of a line of their own without blanks or faults, at the front of what @p parser has to come,
/// and gives each to @p take (digits of the data, address field, bytes, line), which answers false for one that is for the
/// parser. What it takes is what the parser would hand out.
template <class Take>
void take_plain_records(hex_parser& parser, Take&& take) {
    const std::string_view lines = parser.rest();
    std::size_t done = 0;
    std::uint32_t expected_bytes = 0;
    kvr::hex_record record;
    while (true) {
        const std::size_t size = kvr::take_fast_hex_record(lines.substr(done), record, expected_bytes);
        if (size == 0 || record.kind != kvr::hex_record_type::data ||
            !take(record, span{parser.offset() + done, record.text.size() + 1})) {
            break;
        }
        expected_bytes = record.data_bytes;
        done += size;
    }
    parser.skip(done);
}

/// A data record of a file, by its absolute address.
struct hex_data {
    std::uint64_t address; ///< of the first cell
    std::uint32_t bytes;
    std::string_view digits; ///< of the data
    const hex_record* record; ///< null: a plain one, whose digits are in place
    span where;
};

/// Calls @p take with each data record before the end record, those at fault left out. Returns the parser where the end
/// record was found; its line is that record, or the last line.
template <class Take>
hex_parser for_each_data_record(std::string_view contents, hex_offset& offset, Take&& take) {
    hex_parser parser(contents);
    while (true) {
        take_plain_records(parser, [&](const kvr::hex_record& plain, const span& where) {
            take(hex_data{offset.value() + plain.word_address, plain.data_bytes, plain.data(), nullptr, where});
            return true;
        });
        if (!parser.next()) {
            return parser;
        }
        const hex_line& line = parser.line();
        const hex_record& record = line.record;
        if (line.what != hex_line::kind::record || line.fault != hex_fault::none) {
            continue;
        }
        if (record.type == hex_record_type::end) {
            return parser;
        }
        if (record.type == hex_record_type::data) {
            take(hex_data{offset.value() + record.address, record.data_bytes, record.data(), &record, record.where});
        } else if (sets_offset(record.type)) {
            offset.take(record.type, record.data());
        }
    }
}

} // namespace kvrimage

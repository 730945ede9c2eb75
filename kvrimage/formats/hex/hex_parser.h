#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/line_walk.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// Characters that are ignored anywhere in a record.
inline constexpr std::string_view hex_blanks = " \t\r\n";

enum class hex_record_type : std::uint8_t {
    data,
    end,
    segment_address, ///< following addresses count from 16 times its value
    start_segment_address,
    linear_address, ///< following addresses count from 65536 times its value
    start_linear_address,
    unknown,
};

/// Returns whether @p type is an extended address record.
[[nodiscard]] constexpr bool sets_offset(hex_record_type type) {
    return type == hex_record_type::segment_address || type == hex_record_type::linear_address;
}

/// The faults of a record.
enum class hex_fault : std::uint8_t {
    none,
    bad_digit,
    second_record,  ///< another record begins in the line of a complete one
    too_short,      ///< fewer than 8 digits for length, address and type
    no_checksum,    ///< the checksum or one of its digits is missing, in a record without data
    length,         ///< the data does not have the record length
    checksum,       ///< the bytes do not sum to 0 modulo 256
    type,           ///< not 00 to 05
    address_length, ///< the data of an extended address is not 2 bytes
};

/// A record from its colon on. Fields after the first faulty digit are undefined.
struct hex_record {
    span where;                   ///< colon to last digit, including blanks between them
    std::string_view digits;      ///< after the colon, without blanks; valid until the parser advances
    std::uint32_t data_bytes = 0; ///< the record length
    std::uint32_t address = 0;    ///< the address field
    hex_record_type type = hex_record_type::unknown;

    static constexpr std::size_t header = 8; ///< digits of length, address and type
    static constexpr std::size_t shortest = header + 2;

    [[nodiscard]] std::string_view data() const { return digits.substr(header, digits.size() - shortest); }
    [[nodiscard]] bool has_blanks() const noexcept { return where.length != digits.size() + 1; }
    /// Returns the place in @p contents of @p count digits (at least one) from index @p first on, including
    /// blanks between them.
    [[nodiscard]] span span_of(std::string_view contents, std::size_t first, std::size_t count) const;
};

/// A line of an Intel HEX file.
struct hex_line {
    enum class kind : std::uint8_t {
        blank,
        text,   ///< not a record; `content` is the place
        record, ///< valid or not, see `fault`
    };
    span whole;   ///< without LF
    span content; ///< without leading and trailing blanks
    kind what = kind::blank;
    hex_record record;
    hex_fault fault = hex_fault::none;
    span fault_place;
    /// The text before the colon; may be empty.
    span before;
    /// The text is a record without its colon: `record` without a place.
    bool lacks_colon = false;
    /// The text begins like a comment and ends with a record.
    bool hides_record = false;
};

/// Iterates over the lines of an Intel HEX file and gives the place of each part. It does not interpret them:
/// lines after the end record are parsed like any other.
class hex_parser {
public:
    /// @param of kept alive by the caller
    /// @param offset start of a line
    explicit hex_parser(std::string_view of, std::size_t offset = 0) : contents(of), lines(of, offset) {}

    /// Advances to the next line. Returns false at the end.
    bool next();
    [[nodiscard]] const hex_line& line() const noexcept { return current; }

    /// Returns the remaining lines.
    [[nodiscard]] line_walk& to_come() noexcept { return lines; }

private:
    void find_parts();
    void parse_record(std::size_t colon);
    void split_record(std::size_t colon);
    void set_fields();
    void find_fault();
    void set_fault(hex_fault what, std::size_t first, std::size_t count);
    void find_length_fault();

    std::string_view contents;
    line_walk lines;
    hex_line current;
    std::string buffer; ///< the digits of a record that contains blanks
};

/// Returns the sum of the bytes given by an even number of hexadecimal digits.
[[nodiscard]] std::uint32_t sum_of_hex_bytes(std::string_view digits) noexcept;
/// Returns the two checksum digits for @p fields, all other digits of a record: its bytes then sum to 0
/// modulo 256.
[[nodiscard]] std::string hex_checksum(std::string_view fields);

} // namespace kvrimage

#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/line_walk.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// The characters that mean nothing in a record, wherever they are.
inline constexpr std::string_view hex_blanks = " \t\r\n";

enum class hex_record_type : std::uint8_t {
    data,
    end,
    segment_address, ///< the addresses that follow count from 16 times its value
    start_segment_address,
    linear_address, ///< the addresses that follow count from 65536 times its value
    start_linear_address,
    unknown,
};

/// True for an extended address record.
[[nodiscard]] constexpr bool sets_offset(hex_record_type type) {
    return type == hex_record_type::segment_address || type == hex_record_type::linear_address;
}

/// What is wrong with a record.
enum class hex_fault : std::uint8_t {
    none,
    bad_digit,
    second_record,  ///< another record begins in the line of a complete one
    too_short,      ///< the length, address and type have 8 digits
    no_checksum,    ///< of a record without data, the checksum or a digit of it is missing
    length,         ///< the data is not as long as the record length
    checksum,       ///< the bytes do not add up to 0 modulo 256
    type,           ///< none of 00 to 05
    address_length, ///< an extended address of other than 2 bytes
};

/// A record, from its colon on. The fields after the first digit at fault have no meaning.
struct hex_record {
    span where;                   ///< colon to last digit, with the blanks between
    std::string_view digits;      ///< after the colon, without blanks; valid until the parser goes on
    std::uint32_t data_bytes = 0; ///< the record length
    std::uint32_t address = 0;    ///< the address field
    hex_record_type type = hex_record_type::unknown;

    static constexpr std::size_t header = 8; ///< digits of length, address and type
    static constexpr std::size_t shortest = header + 2;

    [[nodiscard]] std::string_view data() const { return digits.substr(header, digits.size() - shortest); }
    [[nodiscard]] bool has_blanks() const noexcept { return where.length != digits.size() + 1; }
    /// Where @p count digits (at least one) from number @p first on are in @p contents, with the blanks
    /// between.
    [[nodiscard]] span span_of(std::string_view contents, std::size_t first, std::size_t count) const;
};

/// A line of an Intel HEX file.
struct hex_line {
    enum class kind : std::uint8_t {
        blank,
        text,   ///< no record: the place is `content`
        record, ///< `fault` says whether it is right
    };
    span whole;   ///< without LF
    span content; ///< from the first to the last character that is no blank
    kind what = kind::blank;
    hex_record record;
    hex_fault fault = hex_fault::none;
    span fault_place;
    /// What comes before the colon; empty where the colon comes first.
    span before;
    /// A text that is a record but for the colon.
    bool lacks_colon = false;
    /// A text that begins as comments do, and ends with a record.
    bool hides_record = false;
};

/// Goes over the lines of an Intel HEX file, each of which it hands out with the place of every part. It
/// reports what a line is and decides nothing: a line after the end record is parsed like any other.
class hex_parser {
public:
    /// @param of kept alive by the caller
    /// @param offset where a line begins
    explicit hex_parser(std::string_view of, std::size_t offset = 0) : contents(of), lines(of, offset) {}

    /// Goes to the next line; false at the end.
    bool next();
    [[nodiscard]] const hex_line& line() const noexcept { return current; }

    /// The lines to come.
    [[nodiscard]] line_walk& to_come() noexcept { return lines; }

private:
    void find_parts();
    void parse_record(std::size_t colon);
    void split_record(std::size_t colon);
    void find_fault();
    void set_fault(hex_fault what, std::size_t first, std::size_t count);
    void find_length_fault();

    std::string_view contents;
    line_walk lines;
    hex_line current;
    std::string buffer; ///< holds the digits of a record with blanks
};

/// The sum of the bytes that an even number of hexadecimal digits spell.
[[nodiscard]] std::uint32_t sum_of_hex_bytes(std::string_view digits) noexcept;
/// The two digits that make the bytes of a record add up to 0 modulo 256, of which @p fields are all others.
[[nodiscard]] std::string hex_checksum(std::string_view fields);

} // namespace kvrimage

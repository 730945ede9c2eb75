#pragma once

#include "kvrimage/bytes/record_style.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/line_walk.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// What is wrong with an S-record.
enum class srec_fault : std::uint8_t {
    none,
    letter,    ///< it begins with "s"
    bad_digit, ///< a character is no hexadecimal digit
    too_short, ///< it ends within its count
    count,     ///< it is not as long as its count says
    fields,    ///< the count does not fit the type
    type,      ///< S4
    checksum,
};

/// Bytes of the address of a record, by its type; 0 for S4.
inline constexpr std::array<std::uint32_t, 10> srec_address_bytes = {2, 2, 3, 4, 0, 2, 3, 4, 3, 2};

/// How the records look, by their types.
inline constexpr std::array<record_style, 10> srec_styles = [] {
    constexpr std::string_view marks = "S0S1S2S3S4S5S6S7S8S9";
    std::array<record_style, 10> styles{};
    for (std::size_t type = 0; type < styles.size(); ++type) {
        const std::size_t address_bytes = srec_address_bytes[type];
        styles[type] = {.mark = marks.substr(2 * type, 2),
                        .address_bytes = address_bytes,
                        .type = "",
                        .counted = address_bytes + 1,
                        .sum = 0xFF};
    }
    return styles;
}();

/// A line of a file of S-records.
struct srec_line {
    enum class kind : std::uint8_t {
        blank,
        text,   ///< no record: the place is `content`
        record, ///< `fault` says whether it is right
    };
    span whole;   ///< without LF
    span content; ///< from the first to the last character that is no blank; of a record all of it
    kind what = kind::blank;
    unsigned type = 0; ///< 0 to 9
    srec_fault fault = srec_fault::none;
    span fault_place;
    // Of a record without a fault, and of one with a wrong checksum:
    std::uint32_t address = 0;
    std::string_view data; ///< the bytes; valid until the parser goes on

    [[nodiscard]] bool is_data() const noexcept { return type >= 1 && type <= 3; }
    [[nodiscard]] bool is_count() const noexcept { return type == 5 || type == 6; }
    [[nodiscard]] bool is_end() const noexcept { return type >= 7; }
    /// Where the two digits of byte number @p index of the data are.
    [[nodiscard]] span span_of_byte(std::uint64_t index) const noexcept {
        constexpr std::size_t before_address = 4;
        return {content.offset + before_address + 2 * (srec_address_bytes[type] + index), 2};
    }
};

/// Goes over the lines of a file of S-records. It reports what a line is and decides nothing: a line after
/// the last record is parsed like any other.
class srec_parser {
public:
    /// @param of kept alive by the caller
    explicit srec_parser(std::string_view of);

    /// Goes to the next line; false at the end.
    bool next();
    [[nodiscard]] const srec_line& line() const noexcept { return current; }
    /// The lines to come.
    [[nodiscard]] line_walk& to_come() noexcept { return lines; }

private:
    void find_parts();
    void parse_record();
    void find_fault(std::string_view digits);
    bool parse_fields(std::string_view digits);
    void set_fault(srec_fault what, std::size_t first, std::size_t count);

    std::string_view contents;
    line_walk lines;
    srec_line current;
    std::array<char, 256> bytes{}; ///< of the record, from its count on
};

/// The checksum of the bytes before it: from the count on.
[[nodiscard]] unsigned srec_checksum(std::string_view bytes) noexcept;

} // namespace kvrimage

#pragma once

#include "kvrimage/bytes/record_style.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/line_walk.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The faults of an S-record.
enum class srec_fault : std::uint8_t {
    none,
    letter,    ///< it begins with "s"
    bad_digit, ///< a character is not a hexadecimal digit
    too_short, ///< shorter than its own count field
    count,     ///< the length differs from the count
    fields,    ///< the count is invalid for the type
    type,      ///< S4
    checksum,
};

/// Address bytes of a record by type; 0 for S4.
inline constexpr std::array<std::uint32_t, 10> srec_address_bytes = {2, 2, 3, 4, 0, 2, 3, 4, 3, 2};

/// Record styles by type.
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

/// A line of an S-record file.
struct srec_line {
    enum class kind : std::uint8_t {
        blank,
        text,   ///< not a record; `content` is the place
        record, ///< valid or not, see `fault`
    };
    span whole;   ///< without LF
    span content; ///< without leading and trailing blanks; of a record all of it
    kind what = kind::blank;
    unsigned type = 0; ///< 0 to 9
    srec_fault fault = srec_fault::none;
    span fault_place;
    // Valid for records without a fault or with a wrong checksum only:
    std::uint32_t address = 0;
    std::string_view data; ///< in bytes; valid until the parser advances

    [[nodiscard]] bool is_data() const noexcept { return type >= 1 && type <= 3; }
    [[nodiscard]] bool is_count() const noexcept { return type == 5 || type == 6; }
    [[nodiscard]] bool is_end() const noexcept { return type >= 7; }
    /// Returns the place of the two digits of data byte number @p index.
    [[nodiscard]] span span_of_byte(std::uint64_t index) const noexcept {
        constexpr std::size_t before_address = 4;
        return {content.offset + before_address + 2 * (srec_address_bytes[type] + index), 2};
    }
};

/// Iterates over the lines of an S-record file. It does not interpret them: lines after the last record are
/// parsed like any other.
class srec_parser {
public:
    /// @param of kept alive by the caller
    explicit srec_parser(std::string_view of);

    /// Advances to the next line. Returns false at the end.
    bool next();
    [[nodiscard]] const srec_line& line() const noexcept { return current; }
    /// Returns the remaining lines.
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

/// Returns the checksum for the bytes of a record from the count on.
[[nodiscard]] unsigned srec_checksum(std::string_view bytes) noexcept;

} // namespace kvrimage

#pragma once

#include "kvr/memory/read_fault.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace kvr {

/// Parses the number at the front of @p text like strtoul in base 16 with a 32-bit result.
[[nodiscard]] std::uint32_t hex_number(std::string_view text) noexcept;

/// Returns the sum, modulo 2^32, of the bytes that @p text encodes. The text is split from the left into
/// pieces of 8 characters, each parsed with hex_number(). If the last piece has an odd number of digits, its
/// first digit is a byte of its own.
[[nodiscard]] std::uint32_t sum_of_bytes(std::string_view text) noexcept;

/// The characters that are ignored at any position of a line of an Intel HEX file.
inline constexpr std::string_view hex_blanks = " \t\n\r";

/// Returns @p line without blanks: the line itself if it has none, otherwise a view of @p buffer, which is
/// overwritten.
[[nodiscard]] std::string_view without_blanks(std::string_view line, std::string& buffer);

enum class hex_record_type : std::uint8_t {
    data,
    end_of_file,
    extended_segment_address,
    start_segment_address,
    extended_linear_address,
    start_linear_address,
    unknown,
};

/// A record whose length matches its record length field. All texts are views of its line, with the digits as
/// in the line.
struct hex_record {
    std::string_view text;          ///< everything after the colon, checksum included, at least 10 characters
    std::uint32_t data_bytes = 0;   ///< value of the record length
    std::uint32_t word_address = 0; ///< value of the address
    hex_record_type kind = hex_record_type::unknown;

    [[nodiscard]] std::string_view length() const { return text.substr(0, 2); }
    [[nodiscard]] std::string_view address() const { return text.substr(2, 4); }
    [[nodiscard]] std::string_view type() const { return text.substr(6, 2); }
    [[nodiscard]] std::string_view data() const { return text.substr(8, text.size() - 10); }
    [[nodiscard]] std::string_view checksum() const { return text.substr(text.size() - 2); }
};

/// The fault of a record and the characters at fault. Character 0 of the line is the colon.
struct hex_record_fault {
    fault_code code;
    std::size_t first;
    std::size_t length;
};

/// Splits @p line, which must begin with a colon and have no blanks, into its fields. Single digits are not
/// checked: numbers are parsed with hex_number(). Checksum and type are not checked either.
[[nodiscard]] std::variant<hex_record, hex_record_fault> split_hex_record(std::string_view line);

/// True if the bytes of @p record, checksum included, add up to 0 modulo 256.
[[nodiscard]] bool has_valid_checksum(const hex_record& record) noexcept;

/// Returns a fault if the type is not 00 to 05.
[[nodiscard]] std::optional<hex_record_fault> check_hex_record_type(const hex_record& record) noexcept;

/// Returns the fault of the checksum, or else that of the type.
[[nodiscard]] std::optional<hex_record_fault> check_hex_record(const hex_record& record) noexcept;

} // namespace kvr

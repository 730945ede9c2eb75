#pragma once

#include "kvr/memory/read_fault.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace kvr {

/// The number at the front of @p text as strtoul reads one in base 16 into 32 bits.
[[nodiscard]] std::uint32_t hex_number(std::string_view text) noexcept;

/// The sum, modulo 2^32, of the bytes that @p text encodes. The text is read in pieces of 8 characters
/// from the left, each as a hex_number(): in a last piece with an odd number of digits the first digit
/// is a byte of its own.
[[nodiscard]] std::uint32_t sum_of_bytes(std::string_view text) noexcept;

/// The characters that are ignored in an Intel HEX file, at any position of a line.
inline constexpr std::string_view hex_blanks = " \t\n\r";

/// @p line without blanks: the line itself when it has none, else a view of @p buffer, which then holds
/// the other characters.
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

/// A record of the length that its record length says. All texts are views of the line it was found in,
/// with the digits as the line has them.
struct hex_record {
    std::string_view text;        ///< from after the colon to the end of the checksum, at least 10 characters
    std::uint32_t data_bytes = 0; ///< value of the record length
    std::uint32_t word_address = 0; ///< value of the address
    hex_record_type kind = hex_record_type::unknown;

    [[nodiscard]] std::string_view length() const { return text.substr(0, 2); }
    [[nodiscard]] std::string_view address() const { return text.substr(2, 4); }
    [[nodiscard]] std::string_view type() const { return text.substr(6, 2); }
    [[nodiscard]] std::string_view data() const { return text.substr(8, text.size() - 10); }
    [[nodiscard]] std::string_view checksum() const { return text.substr(text.size() - 2); }
};

/// What is wrong with a record, and which characters of its line (from 0, the colon) are at fault.
struct hex_record_fault {
    fault_code code;
    std::size_t first;
    std::size_t length;
};

/// Splits @p line, which begins with a colon and has no blanks, into its fields. Digits are not checked
/// one by one: the numbers are hex_number()s. Checksum and type are not checked either.
[[nodiscard]] std::variant<hex_record, hex_record_fault> split_hex_record(std::string_view line);

/// True when the bytes of @p record, with the checksum, add up to 0 modulo 256.
[[nodiscard]] bool has_valid_checksum(const hex_record& record) noexcept;

/// The fault of a record whose type is not 00 to 05.
[[nodiscard]] std::optional<hex_record_fault> check_hex_record_type(const hex_record& record) noexcept;

/// The first of checksum and type that is at fault.
[[nodiscard]] std::optional<hex_record_fault> check_hex_record(const hex_record& record) noexcept;

} // namespace kvr

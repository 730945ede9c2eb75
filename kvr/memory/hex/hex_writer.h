#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

class output_file;
struct hex_memory;

/// Writes the words of @p memory to its file: one data record for each word that is not empty, an extended
/// linear address record before each 65536 words except the first, and the end record. An empty word takes no
/// address, so the words after it move down; callers rely on it. Errors are reported to the owner of the
/// memory and recorded in its status fields.
///
/// @return true if every byte was written
bool write_hex_file(hex_memory& memory);

/// Overwrites @p out with @p value in base 16, in lower case, with leading zeros up to @p width digits.
/// Returns the sum of its pieces of 2 digits, taken from the left. With an even number of digits, this is the
/// sum of the bytes that they encode.
std::int32_t format_hex_value(std::uint32_t value, std::string& out, std::uint32_t width);

/// The common properties of the data records of a memory.
struct hex_record_layout {
    /// @param lower_case true for lower-case letters in words
    hex_record_layout(std::uint32_t bytes_per_word, bool lower_case);

    std::uint32_t bytes_per_word;
    std::string length_digits; ///< the record length field
    const char* data_digits;   ///< maps each character of a word to the one written
};

/// Formats the data record of @p word into @p room. The word must have hexadecimal digits only and, with its
/// leading zeros, an even number of them, and the record must fit. For any other word it returns 0; use
/// write_hex_record() instead.
///
/// @param address word address within the page, below 65536
/// @param room must have output_file::room_limit characters
/// @return the length of the record with its LF, or 0
[[nodiscard]] std::size_t format_fast_hex_record(const hex_record_layout& layout, std::uint32_t address,
                                                 std::string_view word, char* room) noexcept;

/// Writes the data record of @p word, which may have any length and any characters.
void write_hex_record(const hex_record_layout& layout, std::uint32_t address, std::string_view word,
                      output_file& file);

} // namespace kvr

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

class output_file;
struct hex_memory;

/// Writes the words of @p memory to its file: one data record for each word that is not empty, an extended
/// linear address record before every 65536 words except the first ones, and the end record. An empty
/// word takes no address, so the words after it move down; callers rely on it. Errors are reported to
/// the owner of the memory and left in its status fields.
///
/// @return true when every byte was written.
bool write_hex_file(hex_memory& memory);

/// Replaces @p out by @p value in base 16, in lower case, with leading zeros up to @p width digits, and
/// returns the sum of its pieces of 2 digits, taken from the left: for an even number of digits the sum of
/// the bytes that they encode.
std::int32_t format_hex_value(std::uint32_t value, std::string& out, std::uint32_t width);

/// What the data records of a memory have in common.
struct hex_record_layout {
    /// @param lower_case true when the letters of the words are written in lower case.
    hex_record_layout(std::uint32_t bytes_per_word, bool lower_case);

    std::uint32_t bytes_per_word;
    std::string length_digits; ///< the record length field
    const char* data_digits;   ///< for each character the one that is written for it in a word
};

/// Formats the data record of @p word into @p room. It assumes that the word has hexadecimal digits only,
/// that with its leading zeros it has an even number of them, and that the record fits: for any
/// other word it returns 0, and write_hex_record() must write the record.
///
/// @param address word address within the page, below 65536.
/// @param room    takes output_file::room_limit characters.
/// @return number of characters of the record, with its LF, or 0.
[[nodiscard]] std::size_t format_fast_hex_record(const hex_record_layout& layout, std::uint32_t address,
                                                 std::string_view word, char* room) noexcept;

/// Writes the data record of @p word, of any length and with any characters in it.
void write_hex_record(const hex_record_layout& layout, std::uint32_t address, std::string_view word,
                      output_file& file);

} // namespace kvr

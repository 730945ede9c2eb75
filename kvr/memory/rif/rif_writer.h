#pragma once

#include "kvr/memory/io/output_file.h"
#include "kvr/memory/memory_types.h"
#include "kvr/memory/rif/rif_memory.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// Writes the words of @p memory to its file, with the flags and messages of
/// KVR_MEMORY_RIF_FILE::write_out_rif_file(). Returns true if the file could be opened.
bool write_rif_file(rif_memory& memory);

/// Writes the words of @p memory as RIF text to @p file. A word in an unknown radix is omitted with an error
/// message.
/// @throws std::out_of_range for an empty signed-decimal word; the text before it, including the header of
/// its group, was written
void write_rif_words(const rif_memory& memory, output_file& file);

/// Sets @p text to the upper-case hexadecimal digits of @p word at @p width bits (0: all its bits). Higher
/// bits are cut, missing digits are "0", "X" and "x" give "X", and characters that are no digits count as 0.
/// @p word must be hexadecimal; it is processed digit by digit.
void format_hexadecimal_word(std::string_view word, std::uint32_t width, std::string& text);

/// Does the same for a word in any @p radix by way of its bits. Returns false for RADIX_NONE, which gives no
/// bits; @p text is then only the padding.
/// @throws std::out_of_range for an empty signed-decimal word
bool convert_word_to_hexadecimal(std::string_view word, KVR_MEMORY_RADIXES radix, std::uint32_t width,
                                 std::string& text);

} // namespace kvr

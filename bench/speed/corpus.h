#pragma once

#include <cstdint>
#include <string>

namespace speed {

/// The shape of a file of the corpus.
enum class file_shape : std::uint8_t {
    one_word_a_line, ///< or one word per record; RIF: one page of words per line
    eight_values_a_line,
    comment_on_every_line,
    mixed_decimals, ///< one signed decimal number of 1 to 6 characters per line
    thirty_two_bytes_a_record,
};

struct corpus_file {
    const char* name; ///< its extension determines the format
    file_shape shape;
    std::uint32_t bits;
    std::uint32_t words;
};

/// Writes @p file to @p folder, with the same bytes every time, and returns its path.
std::string make_file(const std::string& folder, const corpus_file& file);

/// Writes @p count bytes that resemble data, the same ones every time, to @p path and returns the path.
std::string make_bytes(const std::string& path, std::uint32_t count);

} // namespace speed

#pragma once

#include <cstdint>
#include <string>

namespace speed {

/// The shape of a file of the corpus.
enum class file_shape : std::uint8_t {
    one_word_a_line, ///< or one word a record; RIF: a page of words a line
    eight_values_a_line,
    comment_on_every_line,
    mixed_decimals, ///< one signed decimal of 1 to 6 characters a line
    thirty_two_bytes_a_record,
};

struct corpus_file {
    const char* name; ///< its extension gives the format
    file_shape shape;
    std::uint32_t bits;
    std::uint32_t words;
};

/// Writes @p file into @p folder, the same bytes every time, and returns its path.
std::string make_file(const std::string& folder, const corpus_file& file);

/// Writes @p count bytes that resemble data, the same every time, to @p path, and returns it.
std::string make_bytes(const std::string& path, std::uint32_t count);

} // namespace speed

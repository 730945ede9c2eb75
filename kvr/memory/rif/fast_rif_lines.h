#pragma once

#include "kvr/memory/store/word_batch.h"
#include "kvr/memory/store/word_store.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// Fast path of the rif_reader: parses regular lines in the buffer. A regular line has "@" and an address of
/// a few digits, or words of hexadecimal digits, each followed by one blank or the LF. The result is that of
/// the rif_reader, which implements all rules and faults and gets all other lines.
class fast_rif_lines {
public:
    /// @param target receives the words and must outlive this object
    explicit fast_rif_lines(word_store& target) noexcept : words(target), batch(target) {}

    /// Returns the size of the front of @p lines that may be passed to read(), which reads characters after a
    /// line. Takes the time of a scan of the last lines.
    [[nodiscard]] static std::size_t readable_size(std::string_view lines) noexcept;

    /// Parses @p lines, which must end within their readable size, up to the first one that is not regular.
    /// Returns the size of the lines that it has read.
    /// @param next_address the address of the next word; updated to the address after the lines
    std::size_t read(std::string_view lines, std::uint64_t& next_address);

private:
    const char* read_address(const char* begin) noexcept;
    const char* read_words_of_one_length(const char* begin);
    const char* read_words(const char* begin);
    const char* find_word_end(const char* word, bool& has_lower_case) noexcept;
    void store_word(std::string_view word, bool has_lower_case);
    std::string_view in_upper_case(std::string_view word);

    word_store& words;
    word_batch batch;
    std::uint64_t address = 0;       ///< of the next word
    std::size_t expected_length = 0; ///< of the next word; 0 if none is expected
    std::string upper_cased;
};

} // namespace kvr

#pragma once

#include "kvr/memory/store/word_batch.h"
#include "kvr/memory/store/word_store.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// The fast path of the rif_reader: parses regular lines in the buffer. A regular line has "@" and
/// an address of a few digits, or words of hexadecimal digits, each followed by one blank or the LF. It is
/// read exactly as the rif_reader reads it, which has every rule and every fault, and gets all other lines.
class fast_rif_lines {
public:
    /// @param target takes the words and must outlive this object.
    explicit fast_rif_lines(word_store& target) noexcept : words(target), batch(target) {}

    /// The size of the whole lines @p lines that read() may be called with: it reads characters after a line.
    /// The cost is a scan of the last lines.
    [[nodiscard]] static std::size_t readable_size(std::string_view lines) noexcept;

    struct amount {
        std::size_t bytes;
        std::uint64_t lines;
    };

    /// Reads @p lines, which end within their readable size, up to the first that is not regular.
    /// @param next_address that of the next word; set to the address after the lines that were read.
    amount read(std::string_view lines, std::uint64_t& next_address);

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
    std::size_t expected_length = 0; ///< of the next word; 0 when none is expected
    std::string upper_cased;
};

} // namespace kvr

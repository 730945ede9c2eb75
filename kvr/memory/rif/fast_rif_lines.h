#pragma once

#include "kvr/memory/store/word_batch.h"
#include "kvr/memory/store/word_store.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// The fast path of the rif_reader: reads regular lines straight from the buffer. A regular line has "@" and
/// an address of a few digits, or words of hexadecimal digits, each followed by one blank or the LF. It is
/// read exactly as the rif_reader reads it, which knows every rule and every fault, and gets all other lines.
class fast_rif_lines {
public:
    /// @param target takes the words and is kept alive by the caller.
    explicit fast_rif_lines(word_store& target) noexcept : words(target), batch(target) {}

    /// How much of the whole lines @p lines read() may be asked for: it looks at characters behind a line.
    /// Costs a look at the last lines.
    [[nodiscard]] static std::size_t readable_size(std::string_view lines) noexcept;

    struct amount {
        std::size_t bytes;
        std::uint64_t lines;
    };

    /// Reads @p lines, which end within the readable size of theirs, up to the first that is not regular.
    /// @param next_address that of the next word; set to that behind the lines that were read.
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

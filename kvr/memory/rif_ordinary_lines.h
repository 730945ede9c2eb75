#pragma once

#include "kvr/memory/word_batch.h"
#include "kvr/memory/word_store.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// Reads the ordinary lines of a RIF file straight from the buffer: "@" and an address of a few digits, or
/// words of hexadecimal digits with one blank or the LF behind each. It leaves every other line to the
/// rif_reader, which alone knows every rule and every fault, and does for its own lines exactly what that one
/// would do.
class rif_ordinary_lines {
public:
    /// @param target takes the words and is kept alive by the caller.
    explicit rif_ordinary_lines(word_store& target) noexcept : words(target), batch(target) {}

    /// How much of the whole lines @p lines read() may be asked for: it looks at characters behind a line.
    /// Costs a look at the last lines.
    [[nodiscard]] static std::size_t readable_size(std::string_view lines) noexcept;

    struct amount {
        std::size_t bytes;
        std::uint64_t lines;
    };

    /// Reads @p lines, which end within the readable size of theirs, up to the first that is not ordinary.
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

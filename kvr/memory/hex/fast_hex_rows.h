#pragma once

#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/memory/store/word_row.h"

#include <cstddef>
#include <cstdint>

namespace kvr {

class output_file;

/// Writes the Intel HEX data records of many words at once, for words of the usual form; any other
/// word is for a writer that applies the rules to one word at a time.
class fast_hex_rows {
public:
    /// @param letters of all digits in a record.
    fast_hex_rows(std::uint32_t bytes_per_word, letter_case letters) noexcept;

    /// Writes a record for each word from the first of @p row on, the first with the address @p address
    /// (below 65536). It takes hexadecimal words that, with their leading zeros, have an even number of
    /// digits, in records that are not too long. It stops before any other word and before address 65536.
    ///
    /// @return the number of words that were written.
    std::uint32_t write(const word_row& row, std::uint32_t address, output_file& file) const;

private:
    std::uint32_t bytes;
    letter_case letters;
};

} // namespace kvr

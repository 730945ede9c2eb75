#pragma once

#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/memory/store/word_row.h"

#include <cstddef>
#include <cstdint>

namespace kvr {

class output_file;

/// Writes the Intel HEX data records of many words at once, for words of the usual form. Other words need the
/// writer for single words.
class fast_hex_rows {
public:
    /// @param letters letter case of all digits in a record
    fast_hex_rows(std::uint32_t bytes_per_word, letter_case letters) noexcept;

    /// Writes one record for each word of @p row, the first with the address @p address (below 65536). It
    /// accepts hexadecimal words with an even number of digits, leading zeros included, in records that are
    /// not too long. It stops before any other word and before address 65536.
    ///
    /// @return the number of words written
    std::uint32_t write(const word_row& row, std::uint32_t address, output_file& file) const;

private:
    std::uint32_t bytes;
    letter_case letters;
};

} // namespace kvr

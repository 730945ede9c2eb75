#pragma once

#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/memory/store/word_row.h"

#include <cstddef>
#include <cstdint>

namespace kvr {

class output_file;

/// Writes the Intel HEX data records of many words at once, for words that are as nearly all are; any other
/// word is for a writer that goes by the rules one word at a time.
class fast_hex_rows {
public:
    /// @param letters of all digits in a record.
    fast_hex_rows(std::uint32_t bytes_per_word, letter_case letters) noexcept;

    /// Writes a record for each word from the first of @p row on, the first with the address @p address
    /// (below 65536). It takes hexadecimal words that, with the zeros in front, have an even number of
    /// digits, in records that are not too long, and stops in front of others and of address 65536.
    ///
    /// @return how many words were written.
    std::uint32_t write(const word_row& row, std::uint32_t address, output_file& file) const;

private:
    std::uint32_t bytes;
    letter_case letters;
};

} // namespace kvr

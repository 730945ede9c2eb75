#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The shade of a cell of the bit map: the share of ones among its bits.
enum class bit_shade : std::uint8_t {
    unset,
    none,
    low, ///< less than 30 %
    half,
    high, ///< more than 70 %
    all,
    dont_care ///< at least half of the bits
};

/// Bit positions as rows, addresses as columns.
class bit_map {
public:
    /// @param most_rows at least 1. If words have more bits, a row covers 1, 2, 4, 8 ... bytes: the fewest
    /// that need no more rows
    bit_map(const column_grid& columns_of_picture, std::uint32_t word_width, std::uint32_t most_rows);
    void take(const text_run& run);
    [[nodiscard]] std::uint32_t width() const noexcept { return bits_a_word; }
    [[nodiscard]] std::uint32_t rows() const noexcept { return row_count; }
    /// Returns the row of bit @p bit. Bits and rows count from the least significant bit.
    [[nodiscard]] std::uint32_t row_of(std::uint32_t bit) const noexcept { return bit / bits_a_row; }
    [[nodiscard]] std::uint32_t row_bits() const noexcept { return bits_a_row; }
    [[nodiscard]] bit_shade shade(std::uint32_t row, std::uint32_t column) const noexcept;
    /// Returns the bit positions to label, lowest first: the multiples of the smallest power of two that
    /// needs at most @p most labels, and the highest bit if there is room for it.
    [[nodiscard]] std::vector<std::uint32_t> ticks(std::uint32_t most) const;

private:
    /// The bits of a cell, or of a row of a single word.
    struct bit_count {
        std::uint64_t ones = 0;
        std::uint64_t zeros = 0;
        std::uint64_t dont_cares = 0;
    };
    /// Returns the lowest bit of @p row, or the width for the row after the last one.
    [[nodiscard]] std::uint32_t first_bit_of(std::uint32_t row) const noexcept;
    void count_bits(std::string_view word);
    void add_words(std::uint32_t column, std::uint64_t words);

    column_grid grid;
    std::uint32_t bits_a_word;
    std::uint32_t bits_a_row;
    std::uint32_t row_count;
    std::vector<bit_count> cells;       ///< column by column
    std::vector<bit_count> word_counts; ///< of the current word, by row
    std::string bits;                   ///< of the current word
};

} // namespace kvrimage

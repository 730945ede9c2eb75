#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// How a cell of the bit map looks: the share of ones among its bits.
enum class bit_shade : std::uint8_t {
    unset,
    none,
    low, ///< less than 30 %
    half,
    high, ///< more than 70 %
    all,
    dont_care ///< half of the bits or more
};

/// Rows of bit positions, columns of addresses.
class bit_map {
public:
    /// @param most_rows at least 1; where words have more bits, a row stands for a byte, or for 2, 4, 8 and
    /// so on: the fewest that make no more rows
    bit_map(const column_grid& columns_of_picture, std::uint32_t word_width, std::uint32_t most_rows);
    void take(const text_run& run);
    [[nodiscard]] std::uint32_t width() const noexcept { return bits_a_word; }
    [[nodiscard]] std::uint32_t rows() const noexcept { return row_count; }
    /// The row of bit @p bit, 0 being the least significant one; rows count from there, too.
    [[nodiscard]] std::uint32_t row_of(std::uint32_t bit) const noexcept { return bit / bits_a_row; }
    [[nodiscard]] std::uint32_t row_bits() const noexcept { return bits_a_row; }
    [[nodiscard]] bit_shade shade(std::uint32_t row, std::uint32_t column) const noexcept;
    /// Bit positions to label, the lowest first: multiples of the least power of two of which at most @p most
    /// are needed, and the highest bit where there is room for it.
    [[nodiscard]] std::vector<std::uint32_t> ticks(std::uint32_t most) const;

private:
    /// Bits of one cell or, of a single word, of one row.
    struct bit_count {
        std::uint64_t ones = 0;
        std::uint64_t zeros = 0;
        std::uint64_t dont_cares = 0;
    };
    /// The least significant bit of @p row; of the row after the last one, the width.
    [[nodiscard]] std::uint32_t first_bit_of(std::uint32_t row) const noexcept;
    void count_bits(std::string_view word);
    void add_words(std::uint32_t column, std::uint64_t words);

    column_grid grid;
    std::uint32_t bits_a_word;
    std::uint32_t bits_a_row;
    std::uint32_t row_count;
    std::vector<bit_count> cells;       ///< column by column
    std::vector<bit_count> word_counts; ///< of the word in hand, by row
    std::string bits;                   ///< of the word in hand
};

} // namespace kvrimage

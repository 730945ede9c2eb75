#pragma once

#include "kvr/memory/store/word_store.h"
#include "tools/kvrmem/plot/plot_grid.h"
#include "tools/kvrmem/plot/plot_value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem {

/// What the addresses of a column hold.
enum class occupancy : std::uint8_t {
    unset,
    partly_set,
    set, ///< all of them, but not to one and the same word
    run  ///< all of them and a neighbour at least: the same word
};

/// What a picture tells of the words in one of its columns.
struct word_column {
    std::uint64_t seen = 0; ///< words looked at
    std::uint64_t set = 0;  ///< those of them that are set
    bool is_in_run = false;
    bool begins_run = false; ///< the run's first column

    [[nodiscard]] occupancy state() const noexcept;
};

/// The least and the greatest value, as keys.
struct value_bounds {
    std::uint64_t lowest;
    std::uint64_t highest;
};

/// The strip: which addresses are set, and to what.
class occupancy_strip {
public:
    explicit occupancy_strip(const address_grid& columns_of_addresses)
        : grid(columns_of_addresses),
          counted(grid.columns()) {}
    void take(const kvr::word_run& run);
    /// May be coarser than the picture's.
    [[nodiscard]] const address_grid& addresses() const noexcept { return grid; }
    [[nodiscard]] const std::vector<word_column>& columns() const noexcept { return counted; }

private:
    address_grid grid;
    std::vector<word_column> counted;
};

/// The waveform: nothing where a column has no word with a value.
class value_envelope {
public:
    value_envelope(const address_grid& columns_of_addresses, const value_order& values)
        : grid(columns_of_addresses),
          order(values),
          found(grid.columns()) {}
    void take(const kvr::word_run& run);
    [[nodiscard]] const std::vector<std::optional<value_bounds>>& columns() const noexcept { return found; }
    /// Of all columns.
    [[nodiscard]] std::optional<value_bounds> bounds() const;

private:
    address_grid grid;
    value_order order;
    std::vector<std::optional<value_bounds>> found;
};

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

/// The bit map: rows of bit positions, columns of addresses.
class bit_map {
public:
    /// @param most_rows at least 1; where words have more bits, a row stands for several
    bit_map(const address_grid& columns_of_addresses, std::uint32_t word_width, std::uint32_t most_rows);
    void take(const kvr::word_run& run);
    [[nodiscard]] std::uint32_t rows() const noexcept { return row_count; }
    /// The row of bit @p bit, 0 being the least significant one; rows count from there, too.
    [[nodiscard]] std::uint32_t row_of(std::uint32_t bit) const noexcept;
    [[nodiscard]] bit_shade shade(std::uint32_t row, std::uint32_t column) const noexcept;

private:
    /// Bits of one cell or, of a single word, of one row.
    struct bit_count {
        std::uint64_t ones = 0;
        std::uint64_t zeros = 0;
        std::uint64_t dont_cares = 0;
    };
    /// The least significant bit of @p row; of the row behind the last one, the width.
    [[nodiscard]] std::uint32_t first_bit_of(std::uint32_t row) const noexcept;
    void count_bits(std::string_view word);

    address_grid grid;
    std::uint32_t width;
    std::uint32_t row_count;
    std::vector<bit_count> cells;       ///< column by column
    std::vector<bit_count> word_counts; ///< of the word in hand, by row
    std::string bits;                   ///< of the word in hand
};

} // namespace kvrmem

#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// What the addresses of a column hold.
enum class occupancy : std::uint8_t {
    unset,
    partly_set,
    set,      ///< all of them, but not to one and the same word
    run,      ///< all of them and a neighbour at least: the same word
    dont_care ///< a word that has don't-care bits
};

/// What is known of the words in a column.
struct word_column {
    std::uint64_t seen = 0; ///< words looked at
    std::uint64_t set = 0;  ///< those of them that are set
    bool is_in_run = false;
    bool begins_run = false; ///< the run's first column
    bool has_dont_care = false;

    [[nodiscard]] occupancy state() const noexcept;
};

/// Neighbouring columns of one state.
struct occupancy_stretch {
    occupancy state;
    std::uint32_t begin;
    std::uint32_t end; ///< exclusive

    friend bool operator==(const occupancy_stretch&, const occupancy_stretch&) = default;
};

/// The strip: which addresses are set, and where neighbours are the same.
class occupancy_strip {
public:
    /// @p columns_of_strip may be coarser than the picture above it.
    explicit occupancy_strip(const column_grid& columns_of_strip)
        : cells(columns_of_strip),
          counted(cells.columns()) {}
    void take(const text_run& run);
    /// The words from @p first to @p last, which it has taken as unset, are set.
    void add_set(std::uint64_t first, std::uint64_t last);
    [[nodiscard]] const column_grid& grid() const noexcept { return cells; }
    [[nodiscard]] const std::vector<word_column>& columns() const noexcept { return counted; }
    /// All columns, in order. A stretch ends with its state, or with a part of the grid.
    [[nodiscard]] std::vector<occupancy_stretch> stretches() const;

private:
    column_grid cells;
    std::vector<word_column> counted;
};

} // namespace kvrimage

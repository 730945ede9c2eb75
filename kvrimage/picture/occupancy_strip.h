#pragma once

#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// The state of the addresses of a column.
enum class occupancy : std::uint8_t {
    unset,
    partly_set,
    set,      ///< all are set, to different words
    run,      ///< all are set, and at least one neighbor too, to the same word
    dont_care ///< a word has don't-care bits
};

/// A summary of the words in a column.
struct word_column {
    std::uint64_t seen = 0; ///< words examined
    std::uint64_t set = 0;  ///< words examined that are set
    bool is_in_run = false;
    bool begins_run = false; ///< true in the first column of the run
    bool has_dont_care = false;

    [[nodiscard]] occupancy state() const noexcept;
};

/// Adjacent columns with the same state.
struct occupancy_stretch {
    occupancy state;
    std::uint32_t begin;
    std::uint32_t end; ///< exclusive

    friend bool operator==(const occupancy_stretch&, const occupancy_stretch&) = default;
};

/// A strip that shows which addresses are set and which adjacent words are equal.
class occupancy_strip {
public:
    /// @p columns_of_strip may be coarser than the columns of the picture.
    explicit occupancy_strip(const column_grid& columns_of_strip)
        : cells(columns_of_strip),
          counted(cells.columns()) {}
    void take(const text_run& run);
    /// Marks the words from @p first to @p last, taken as unset before, as set.
    void add_set(std::uint64_t first, std::uint64_t last);
    [[nodiscard]] const column_grid& grid() const noexcept { return cells; }
    [[nodiscard]] const std::vector<word_column>& columns() const noexcept { return counted; }
    /// Returns all columns in order. A stretch ends where the state changes or a part of the grid ends.
    [[nodiscard]] std::vector<occupancy_stretch> stretches() const;

private:
    column_grid cells;
    std::vector<word_column> counted;
};

} // namespace kvrimage

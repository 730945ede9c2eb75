#pragma once

#include "kvrimage/image/image_words.h"

#include <algorithm>
#include <cstdint>

namespace kvrimage {

/// Shares out a range of offsets among the columns of a picture: each gets the same number of words, except
/// the last, which may get fewer.
class column_grid {
public:
    /// Offsets from @p first to @p last, both included.
    /// @param most_columns at least 1
    column_grid(std::uint64_t first, std::uint64_t last, std::uint32_t most_columns)
        : first_offset(first),
          last_offset(last),
          column_words((words() + most_columns - 1) / most_columns) {}

    [[nodiscard]] std::uint64_t first() const noexcept { return first_offset; }
    /// Inclusive.
    [[nodiscard]] std::uint64_t last() const noexcept { return last_offset; }
    [[nodiscard]] std::uint64_t words() const noexcept { return last_offset - first_offset + 1; }
    [[nodiscard]] std::uint64_t words_a_column() const noexcept { return column_words; }
    [[nodiscard]] std::uint32_t columns() const noexcept { return column_of(last_offset) + 1; }
    /// The column of @p offset, which must be in the range.
    [[nodiscard]] std::uint32_t column_of(std::uint64_t offset) const noexcept {
        return static_cast<std::uint32_t>((offset - first_offset) / column_words);
    }
    [[nodiscard]] std::uint64_t first_of(std::uint32_t column) const noexcept {
        return first_offset + column * column_words;
    }
    /// Inclusive.
    [[nodiscard]] std::uint64_t last_of(std::uint32_t column) const noexcept {
        return std::min(first_of(column) + column_words - 1, last_offset);
    }

    /// Calls @p take (column, number of words) for each column that has words of @p run, which must be in the
    /// range.
    template <class Take>
    void for_each_column(const text_run& run, Take&& take) const {
        for (std::uint32_t column = column_of(run.first); column <= column_of(run.last); ++column) {
            const std::uint64_t first = std::max(first_of(column), run.first);
            const std::uint64_t last = std::min(last_of(column), run.last);
            take(column, last - first + 1);
        }
    }

private:
    std::uint64_t first_offset;
    std::uint64_t last_offset;
    std::uint64_t column_words;
};

} // namespace kvrimage

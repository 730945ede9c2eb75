#pragma once

#include "kvrimage/image/image_words.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace kvrimage {

/// A stretch of offsets that a picture shows without a gap, and its room. The unit of room is a character or
/// some pixels.
struct shown_stretch {
    std::uint64_t first; ///< first offset
    std::uint64_t last;  ///< last offset, inclusive
    std::uint32_t begin; ///< units before the stretch
    std::uint32_t room;  ///< units of the stretch, at least 1

    friend bool operator==(const shown_stretch&, const shown_stretch&) = default;
};

/// Distributes the offsets of a picture to its columns. The columns of a stretch have the same number of
/// words, except the last one, which may have fewer.
class column_grid {
public:
    /// A stretch with its columns.
    struct part : shown_stretch {
        std::uint64_t words_a_column = 1;
        std::uint32_t first_column = 0;

        [[nodiscard]] std::uint32_t columns() const noexcept {
            return static_cast<std::uint32_t>((last - first) / words_a_column) + 1;
        }
    };

    /// Makes a grid of one stretch from @p first to @p last, inclusive.
    /// @param most_columns at least 1
    column_grid(std::uint64_t first, std::uint64_t last, std::uint32_t most_columns)
        : column_grid(std::vector<shown_stretch>{{first, last, 0, most_columns}}) {}

    /// Makes a grid of @p stretches: at least one, in order and apart. A stretch has at most one column for
    /// each unit of room.
    explicit column_grid(std::span<const shown_stretch> stretches) {
        for (const shown_stretch& stretch : stretches) {
            part next{stretch};
            next.words_a_column = (stretch.last - stretch.first) / stretch.room + 1;
            next.first_column = shown.empty() ? 0 : columns();
            shown.push_back(next);
        }
    }

    [[nodiscard]] const std::vector<part>& parts() const noexcept { return shown; }
    /// Returns the first and the last offset, both inclusive.
    ///@{
    [[nodiscard]] std::uint64_t first() const noexcept { return shown.front().first; }
    [[nodiscard]] std::uint64_t last() const noexcept { return shown.back().last; }
    ///@}
    /// Returns the units of all stretches and of the breaks between them.
    [[nodiscard]] std::uint32_t room() const noexcept { return shown.back().begin + shown.back().room; }
    [[nodiscard]] std::uint32_t columns() const noexcept {
        return shown.back().first_column + shown.back().columns();
    }
    [[nodiscard]] const part& part_of_column(std::uint32_t column) const noexcept {
        return *std::prev(std::ranges::upper_bound(shown, column, {}, &part::first_column));
    }
    /// Returns the column of @p offset, which must be in a stretch.
    [[nodiscard]] std::uint32_t column_of(std::uint64_t offset) const noexcept {
        const part& of = *std::prev(std::ranges::upper_bound(shown, offset, {}, &part::first));
        return of.first_column + static_cast<std::uint32_t>((offset - of.first) / of.words_a_column);
    }
    [[nodiscard]] std::uint64_t first_of(std::uint32_t column) const noexcept {
        const part& of = part_of_column(column);
        return of.first + (column - of.first_column) * of.words_a_column;
    }
    /// Returns the last offset of a column, inclusive.
    [[nodiscard]] std::uint64_t last_of(std::uint32_t column) const noexcept {
        const part& of = part_of_column(column);
        const std::uint64_t first = first_of(column);
        return of.last - first < of.words_a_column ? of.last : first + (of.words_a_column - 1);
    }
    [[nodiscard]] std::uint64_t words_of(std::uint32_t column) const noexcept {
        return last_of(column) - first_of(column) + 1;
    }

    /// Calls @p take(column, number of words) for each column with words at the offsets from @p first to
    /// @p last. Offsets outside the stretches are ignored.
    template <class Take>
    void for_each_column(std::uint64_t first, std::uint64_t last, Take&& take) const {
        for (const part& of : shown) {
            const std::uint64_t begin = std::max(first, of.first);
            const std::uint64_t end = std::min(last, of.last);
            if (begin <= end) {
                for_each_column_of(of, begin, end, take);
            }
        }
    }
    /// Does the same for the words of @p run.
    template <class Take>
    void for_each_column(const text_run& run, Take&& take) const {
        for_each_column(run.first, run.last, std::forward<Take>(take));
    }

private:
    template <class Take>
    static void for_each_column_of(const part& of, std::uint64_t first, std::uint64_t last, Take& take) {
        const auto end_column = static_cast<std::uint32_t>((last - of.first) / of.words_a_column);
        auto column = static_cast<std::uint32_t>((first - of.first) / of.words_a_column);
        for (; column < end_column; ++column) {
            const std::uint64_t next = of.first + (column + std::uint64_t{1}) * of.words_a_column;
            take(of.first_column + column, next - first);
            first = next;
        }
        take(of.first_column + column, last - first + 1);
    }

    std::vector<part> shown;
};

} // namespace kvrimage

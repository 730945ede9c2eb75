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

/// A stretch of offsets that a picture shows without a gap, and the room that it has there. The unit of room
/// is what the picture is made of: a character, or some pixels.
struct shown_stretch {
    std::uint64_t first; ///< offset
    std::uint64_t last;  ///< inclusive
    std::uint32_t begin; ///< units before it
    std::uint32_t room;  ///< units that it has, at least 1

    friend bool operator==(const shown_stretch&, const shown_stretch&) = default;
};

/// Shares out the offsets of a picture among its columns. Each column of a stretch gets the same number of
/// words, except the last, which may get fewer.
class column_grid {
public:
    /// A stretch with the columns that it is made of.
    struct part : shown_stretch {
        std::uint64_t words_a_column = 1;
        std::uint32_t first_column = 0;

        [[nodiscard]] std::uint32_t columns() const noexcept {
            return static_cast<std::uint32_t>((last - first) / words_a_column) + 1;
        }
    };

    /// One stretch from @p first to @p last, both included, with all the room.
    /// @param most_columns at least 1
    column_grid(std::uint64_t first, std::uint64_t last, std::uint32_t most_columns)
        : column_grid(std::vector<shown_stretch>{{first, last, 0, most_columns}}) {}

    /// @p stretches, at least one, in order and apart. No stretch has more columns than units of room.
    explicit column_grid(std::span<const shown_stretch> stretches) {
        for (const shown_stretch& stretch : stretches) {
            part next{stretch};
            next.words_a_column = (stretch.last - stretch.first) / stretch.room + 1;
            next.first_column = shown.empty() ? 0 : columns();
            shown.push_back(next);
        }
    }

    [[nodiscard]] const std::vector<part>& parts() const noexcept { return shown; }
    /// The first offset of all, and the last one, which is inclusive.
    ///@{
    [[nodiscard]] std::uint64_t first() const noexcept { return shown.front().first; }
    [[nodiscard]] std::uint64_t last() const noexcept { return shown.back().last; }
    ///@}
    /// Units of all stretches, and of what is between them.
    [[nodiscard]] std::uint32_t room() const noexcept { return shown.back().begin + shown.back().room; }
    [[nodiscard]] std::uint32_t columns() const noexcept {
        return shown.back().first_column + shown.back().columns();
    }
    [[nodiscard]] const part& part_of_column(std::uint32_t column) const noexcept {
        return *std::prev(std::ranges::upper_bound(shown, column, {}, &part::first_column));
    }
    /// The column of @p offset, which must be in a stretch.
    [[nodiscard]] std::uint32_t column_of(std::uint64_t offset) const noexcept {
        const part& of = *std::prev(std::ranges::upper_bound(shown, offset, {}, &part::first));
        return of.first_column + static_cast<std::uint32_t>((offset - of.first) / of.words_a_column);
    }
    [[nodiscard]] std::uint64_t first_of(std::uint32_t column) const noexcept {
        const part& of = part_of_column(column);
        return of.first + (column - of.first_column) * of.words_a_column;
    }
    /// Inclusive.
    [[nodiscard]] std::uint64_t last_of(std::uint32_t column) const noexcept {
        const part& of = part_of_column(column);
        const std::uint64_t first = first_of(column);
        return of.last - first < of.words_a_column ? of.last : first + (of.words_a_column - 1);
    }
    [[nodiscard]] std::uint64_t words_of(std::uint32_t column) const noexcept {
        return last_of(column) - first_of(column) + 1;
    }

    /// Calls @p take (column, number of words) for each column that has words of the offsets from @p first to
    /// @p last, of which some may be in no stretch.
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
    /// The same for the words of @p run.
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

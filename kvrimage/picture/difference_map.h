#pragma once

#include "kvrimage/compare/compare.h"
#include "kvrimage/picture/column_grid.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// The kind of difference at an address.
enum class difference_kind : std::uint8_t {
    changed,   ///< both memories have a word
    left_only, ///< only the first memory has a word
    right_only ///< only the second memory has a word
};

inline constexpr std::array difference_kinds = {difference_kind::changed, difference_kind::left_only,
                                                difference_kind::right_only};

[[nodiscard]] difference_kind kind_of(const difference& found) noexcept;

/// Counts the differing words of each column.
class difference_map {
public:
    explicit difference_map(const column_grid& columns_of_picture)
        : grid(columns_of_picture),
          counted(grid.columns()) {}

    /// @param offsets offsets of the addresses of @p found
    void take(const difference& found, const address_range& offsets);
    /// Returns the total of all columns.
    [[nodiscard]] std::uint64_t total(difference_kind kind) const noexcept {
        return totals[static_cast<std::size_t>(kind)];
    }
    [[nodiscard]] std::uint64_t count(difference_kind kind, std::uint32_t column) const noexcept {
        return counted[column][static_cast<std::size_t>(kind)];
    }
    /// Returns the share of the words of the column, from 0 to 1.
    [[nodiscard]] double share(difference_kind kind, std::uint32_t column) const noexcept {
        return static_cast<double>(count(kind, column)) / static_cast<double>(grid.words_of(column));
    }

private:
    using counts = std::array<std::uint64_t, difference_kinds.size()>;

    column_grid grid;
    std::vector<counts> counted;
    counts totals{};
};

} // namespace kvrimage

#pragma once

#include "kvrimage/compare/compare.h"
#include "kvrimage/picture/column_grid.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// What is different at an address.
enum class difference_kind : std::uint8_t {
    changed,   ///< both memories have a word there
    left_only, ///< only the first one has
    right_only ///< only the second one has
};

inline constexpr std::array difference_kinds = {difference_kind::changed, difference_kind::left_only,
                                                difference_kind::right_only};

[[nodiscard]] difference_kind kind_of(const difference& found) noexcept;

/// How many words of each column differ.
class difference_map {
public:
    explicit difference_map(const column_grid& columns_of_picture)
        : grid(columns_of_picture),
          counted(grid.columns()) {}

    /// @p offsets of the addresses of @p found
    void take(const difference& found, const address_range& offsets);
    /// Of all columns.
    [[nodiscard]] std::uint64_t total(difference_kind kind) const noexcept {
        return totals[static_cast<std::size_t>(kind)];
    }
    [[nodiscard]] std::uint64_t count(difference_kind kind, std::uint32_t column) const noexcept {
        return counted[column][static_cast<std::size_t>(kind)];
    }
    /// 0 for none of the words of the column, 1 for all.
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

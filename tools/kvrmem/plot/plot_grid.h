#pragma once

#include "kvr/memory/store/word_store.h"
#include "tools/kvrmem/numbers/human_number.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace kvrmem {

/// Shares out the addresses of a range among the columns of a picture: each gets the same number of words,
/// but for the last one, which may get fewer.
class address_grid {
public:
    /// @param most_columns at least 1
    address_grid(const address_range& addresses, std::uint32_t most_columns);

    [[nodiscard]] const address_range& range() const noexcept { return addresses; }
    [[nodiscard]] std::uint64_t words() const noexcept {
        return std::uint64_t{addresses.last} - addresses.first + 1;
    }
    [[nodiscard]] std::uint64_t words_a_column() const noexcept { return column_words; }
    [[nodiscard]] std::uint32_t columns() const noexcept;
    /// The column of @p address, which must be in the range.
    [[nodiscard]] std::uint32_t column_of(std::uint64_t address) const noexcept;
    [[nodiscard]] std::uint64_t first_of(std::uint32_t column) const noexcept;
    /// Inclusive.
    [[nodiscard]] std::uint64_t last_of(std::uint32_t column) const noexcept;

private:
    address_range addresses;
    std::uint64_t column_words;
};

/// True when @p range holds more than @p limit runs. The cost is that of a look at so many.
[[nodiscard]] bool has_more_runs(const kvr::word_store& words, const address_range& range,
                                 std::uint64_t limit);

/// What to look at where there is too much: in each column this many runs from each of this many places on,
/// which are spread evenly over it.
struct run_samples {
    std::uint32_t runs;
    std::uint32_t places;
};

/// Shows @p take the runs of the grid's range, cut to it, in the order of their addresses: all of them, or
/// @p samples. The cost depends on the runs that are shown, not on the number of words.
void walk_runs(const kvr::word_store& words, const address_grid& grid,
               const std::optional<run_samples>& samples,
               const std::function<void(const kvr::word_run&)>& take);

} // namespace kvrmem

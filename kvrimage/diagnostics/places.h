#pragma once

#include "kvrimage/diagnostics/span.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// The places with the same fault: the first ten, and the total count.
class places {
public:
    static constexpr std::size_t kept = 10;

    places() = default; ///< no place: the file as a whole
    places(const span& only) { add(only); }

    void add(const span& where) {
        if (first_ones.size() < kept) {
            first_ones.push_back(where);
        }
        ++number;
    }
    [[nodiscard]] bool empty() const noexcept { return number == 0; }
    [[nodiscard]] std::uint64_t count() const noexcept { return number; }
    [[nodiscard]] const std::vector<span>& first() const noexcept { return first_ones; }
    /// Returns the first place. Undefined if there is none.
    [[nodiscard]] const span& front() const noexcept { return first_ones.front(); }

private:
    std::vector<span> first_ones;
    std::uint64_t number = 0;
};

/// Places with a number each. A message shows the number of the first place and the largest number.
struct numbered_places {
    places where;
    std::uint64_t first = 0;
    std::uint64_t most = 0;

    void add(const span& place, std::uint64_t value) { add(place, value, value); }
    /// Adds a place with several numbers: @p value counts as the first one, @p largest as the largest.
    void add(const span& place, std::uint64_t value, std::uint64_t largest) {
        first = where.empty() ? value : first;
        most = std::max(most, largest);
        where.add(place);
    }
    [[nodiscard]] bool empty() const noexcept { return where.empty(); }
};

} // namespace kvrimage

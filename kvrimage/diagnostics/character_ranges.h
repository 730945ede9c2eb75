#pragma once

#include <algorithm>
#include <span>

namespace kvrimage {

/// An inclusive range of characters.
struct character_range {
    char32_t first;
    char32_t last;
};

/// Returns whether @p ranges are ascending and do not overlap.
constexpr bool is_in_order(std::span<const character_range> ranges) {
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        if (ranges[i].first > ranges[i].last || (i > 0 && ranges[i - 1].last >= ranges[i].first)) {
            return false;
        }
    }
    return true;
}

/// Returns whether @p ranges, ascending and without overlaps, contain @p code. Takes O(log ranges).
constexpr bool is_in(std::span<const character_range> ranges, char32_t code) {
    const auto found = std::ranges::lower_bound(ranges, code, {}, &character_range::last);
    return found != ranges.end() && found->first <= code;
}

} // namespace kvrimage

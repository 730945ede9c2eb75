#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// A summary of some offsets: the number of words that are set, and the longest gaps without words.
struct set_words {
    std::uint64_t count = 0;
    std::vector<address_range> gaps; ///< in order, at most most_gaps

    static constexpr std::size_t most_gaps = 64;
};

/// Summarizes the offsets from @p first to @p last, which must be in @p words. Takes time proportional to the
/// words that were set one by one.
[[nodiscard]] set_words set_words_of(const image_words& words, std::uint64_t first, std::uint64_t last);

/// Returns the stretches that are gaps in both lists. All lists are in order.
[[nodiscard]] std::vector<address_range> common_gaps(const std::vector<address_range>& left,
                                                     const std::vector<address_range>& right);

/// How a picture is divided.
struct picture_room {
    std::uint32_t units;      ///< units of the whole width
    std::uint32_t least_part; ///< the fewest units of a stretch between two breaks
    std::uint32_t a_break;    ///< units of a break
};

/// Returns the stretches of the offsets from @p first to @p last to show. If not every word has room, gaps
/// are left out that are at least four times as long as the words of @p set together. The longest gaps go
/// first, as long as the remaining stretches fit. The first and the last offset are always shown. Room beyond
/// the minimum is distributed in proportion to the number of words.
[[nodiscard]] std::vector<shown_stretch> shown_stretches(std::uint64_t first, std::uint64_t last,
                                                         const set_words& set, const picture_room& room);

} // namespace kvrimage

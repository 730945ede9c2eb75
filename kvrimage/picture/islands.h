#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/picture/column_grid.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// What is known of some offsets: how many words are set, and the longest stretches in which none is.
struct set_words {
    std::uint64_t count = 0;
    std::vector<address_range> gaps; ///< in order; no more than most_gaps

    static constexpr std::size_t most_gaps = 64;
};

/// Looks at the words from @p first to @p last, which are in @p words. The cost follows what was set one by
/// one.
[[nodiscard]] set_words set_words_of(const image_words& words, std::uint64_t first, std::uint64_t last);

/// The stretches that are a gap in both; all lists are in order.
[[nodiscard]] std::vector<address_range> common_gaps(const std::vector<address_range>& left,
                                                     const std::vector<address_range>& right);

/// How a picture is divided.
struct picture_room {
    std::uint32_t units;      ///< of the whole width
    std::uint32_t least_part; ///< units that a stretch needs between two breaks
    std::uint32_t a_break;    ///< units between two stretches
};

/// The stretches of the offsets from @p first to @p last to show. Where there is no room for each word, a gap
/// that is longer than @p set has words by far (four times) is left out; of these the longest ones, as far as
/// there is room for what remains. The first and the last offset are shown in any case. Beyond the least, the
/// room goes by the number of words.
[[nodiscard]] std::vector<shown_stretch> shown_stretches(std::uint64_t first, std::uint64_t last,
                                                         const set_words& set, const picture_room& room);

} // namespace kvrimage

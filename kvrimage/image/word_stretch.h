#pragma once

#include "kvrimage/image/image_words.h"

#include <cstdint>

namespace kvrimage {

/// Words of which much is known without a look at each.
struct word_stretch {
    std::uint64_t last;   ///< the last offset of it
    std::uint64_t period; ///< each word equals the one so many offsets before it; at most the length
    bool is_set;          ///< else no word of it is
};

/// The stretch of @p words from @p offset on: a row, what one fill has set, or a run. The next words may go
/// on with it.
[[nodiscard]] inline word_stretch stretch_at(const image_words& words, std::uint64_t offset) {
    if (const kvr::word_row row = words.row_at(offset); row.count != 0) {
        return {offset + row.count - 1, row.count, true};
    }
    if (const text_cycle cycle = words.cycle_at(offset); cycle.period > 1) {
        return {cycle.last, std::min<std::uint64_t>(cycle.period, cycle.length()), true};
    }
    const text_run run = words.run_at(offset);
    return {run.last, 1, !run.text.empty()};
}

} // namespace kvrimage

#pragma once

#include "kvrimage/image/image_words.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

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

/// Reads words one after the other, a row at a time where there is one.
class row_reader {
public:
    explicit row_reader(const image_words& read) : words(&read) {}

    /// The text of the word at @p offset; valid until the words change, as is the reader.
    [[nodiscard]] std::string_view operator[](std::uint64_t offset) {
        if (offset - first >= row.count) {
            row = words->row_at(offset);
            first = offset;
        }
        return row.count != 0 ? row[static_cast<std::uint32_t>(offset - first)] : (*words)[offset];
    }

private:
    const image_words* words;
    kvr::word_row row;
    std::uint64_t first = 0; ///< offset of the row
};

} // namespace kvrimage

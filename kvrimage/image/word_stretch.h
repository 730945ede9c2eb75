#pragma once

#include "kvrimage/image/image_words.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// A stretch of words whose repetition is known without comparing them.
struct word_stretch {
    std::uint64_t last;   ///< the last offset
    std::uint64_t period; ///< each word equals the one `period` offsets before it; at most the length
    bool is_set;          ///< true if all words are set, false if none is
};

/// Returns the stretch from @p offset on: a row, a cycle of a fill, or a run. The next stretch may continue
/// the same repetition.
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

/// Reads words in sequence, a row at a time if possible.
class row_reader {
public:
    explicit row_reader(const image_words& read) : words(&read) {}

    /// Returns the text of the word at @p offset. The text and the reader are valid until the words change.
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

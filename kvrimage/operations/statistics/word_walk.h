#pragma once

#include "kvrimage/image/word_runs.h"

#include <cstdint>

namespace kvrimage {

/// Walks over all words in order. @p take gets a text, its offset and the number of equal words; the text of
/// words that are not set is "". A fill may repeat several words billions of times. For such a cycle @p take
/// gets the words of the first turn, then @p visit_turns gets the first offset, the period, and the number of
/// further turns, at least 1.
template <class Take, class VisitTurns>
void for_each_word_or_turn(const image_words& words, Take&& take, VisitTurns&& visit_turns) {
    cycle_finder cycles(words);
    const auto visit_some = [&](std::uint64_t offset) -> std::uint64_t {
        if (const kvr::word_row row = words.row_at(offset); row.count != 0) {
            for (std::uint32_t index = 0; index < row.count; ++index) {
                take(row[index], offset + index, std::uint64_t{1});
            }
            return row.count;
        }
        const auto cycle = cycles.find(offset);
        if (!cycle) {
            return 0;
        }
        for (std::uint32_t index = 0; index < cycle->period; ++index) {
            take(words[offset + index], offset + index, std::uint64_t{1});
        }
        const std::uint64_t turns = cycle->length() / cycle->period; // at least two
        visit_turns(offset, cycle->period, turns - 1);
        return turns * cycle->period;
    };
    for_each_part(words, visit_some,
                  [&take](const text_run& run) { take(run.text, run.first, length_of(run)); });
}

} // namespace kvrimage

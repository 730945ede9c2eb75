#pragma once

#include "kvrimage/image/word_runs.h"

#include <cstdint>

namespace kvrimage {

/// Goes over all words in order, those that are not set among them, whose text is "". @p take gets the text,
/// the offset and the number of equal words. Where a fill has made a cycle of several words, which may be
/// billions, @p take gets those of its first turn, and @p add_turns then their first offset, how many they
/// are, and how often at least once they follow again.
template <class Take, class TakeTurns>
void for_each_word_or_turn(const image_words& words, Take&& take, TakeTurns&& add_turns) {
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
        const std::uint64_t turns = cycle->length() / cycle->period; // two at least
        add_turns(offset, cycle->period, turns - 1);
        return turns * cycle->period;
    };
    for_each_part(words, visit_some,
                  [&take](const text_run& run) { take(run.text, run.first, length_of(run)); });
}

} // namespace kvrimage

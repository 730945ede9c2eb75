#include "kvrimage/operations/statistics/runs.h"

#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/statistics/run_counter.h"
#include "kvrimage/operations/statistics/word_walk.h"

namespace kvrimage {

void run_counter::take(std::string_view text, std::uint64_t offset, std::uint64_t length) {
    if (text != current.text) {
        current = {offset, offset, text};
        runs += text.empty() ? 0U : 1U;
    }
    current.last = offset + length - 1;
    keep_longest();
}

void run_counter::add_turns(std::uint64_t offset, std::uint32_t period, std::uint64_t turns) {
    // The second turn counts the run across the border of two turns; all further turns are like it. Since the
    // words are not all equal, the last run of a turn begins within the turn.
    const std::uint64_t runs_before = runs;
    for (std::uint32_t index = 0; index < period; ++index) {
        take(words[offset + index], offset + period + index, 1);
    }
    const std::uint64_t skipped = (turns - 1) * period;
    runs += (turns - 1) * (runs - runs_before);
    current.first += skipped;
    current.last += skipped;
    keep_longest();
}

void run_counter::keep_longest() {
    if (!current.text.empty() && (best.text.empty() || length_of(current) > length_of(best))) {
        best = current;
    }
}

run_statistics runs_of(const memory_image& image) {
    run_counter counter(image.words());
    for_each_word_or_turn(
        image.words(),
        [&counter](std::string_view text, std::uint64_t offset, std::uint64_t length) {
            counter.take(text, offset, length);
        },
        [&counter](std::uint64_t offset, std::uint32_t period, std::uint64_t turns) {
            counter.add_turns(offset, period, turns);
        });
    run_statistics statistics{counter.count(), {}};
    if (const text_run& longest = counter.longest(); !longest.text.empty()) {
        statistics.longest = {{image.base() + longest.first, image.base() + longest.last},
                              word_of_text(longest.text, image.width())};
    }
    return statistics;
}

} // namespace kvrimage

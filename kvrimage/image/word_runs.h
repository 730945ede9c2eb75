#pragma once

#include "kvrimage/image/differing_runs.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/work_position.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>

namespace kvrimage {

/// Calls @p take with every run of equal words of the addresses from @p first to before @p end, which are all
/// in
/// @p words, in order and cut to them. Words that are not set make runs too: their text is "". @p take may
/// change the words of its run.
template <class Take>
void for_each_run(const image_words& words, std::uint64_t first, std::uint64_t end, Take&& take) {
    for (std::uint64_t address = first; address < end;) {
        text_run run = words.run_at(address);
        run.last = std::min(run.last, end - 1);
        address = run.last + 1;
        take(run);
    }
}

/// The same over all of @p words.
template <class Take>
void for_each_run(const image_words& words, Take&& take) {
    for_each_run(words, 0, words.size(), take);
}

/// Calls @p take with every run of equal words of @p words that are set, in order.
template <class Take>
void for_each_set_run(const image_words& words, Take&& take) {
    for_each_run(words, [&take](const text_run& run) {
        if (!run.text.empty()) {
            take(run);
        }
    });
}

/// How many addresses @p run, or a cycle, covers.
template <class Stretch>
[[nodiscard]] std::uint64_t length_of(const Stretch& run) {
    return run.last - run.first + 1;
}

/// Finds the cycles of several words in a walk over a memory, and does not look for the same one twice.
class cycle_finder {
public:
    explicit cycle_finder(const image_words& looked_through) : words(looked_through) {}

    /// The cycle from @p address on, if it repeats at least once in full and was not found before. All its
    /// words are set, since "" is set in whole ranges only.
    [[nodiscard]] std::optional<text_cycle> find(std::uint64_t address);

private:
    const image_words& words;
    std::uint64_t known_until = 0;
};

/// Goes over the words, in order. @p take_some is called with an address and answers how many words it has
/// taken from there on; where it took none, @p take_run gets the run of equal words. Words that were not
/// set make runs too.
template <class TakeSome, class TakeRun>
void for_each_part(const image_words& words, TakeSome&& take_some, TakeRun&& take_run) {
    for (std::uint64_t address = 0; address < words.size();) {
        note_work(address, words.size());
        if (const std::uint64_t taken = take_some(address)) {
            address += taken;
            continue;
        }
        const text_run run = words.run_at(address);
        address = run.last + 1;
        take_run(run);
    }
}

/// Goes over the words, in order. Where a fill has made a cycle of several words, which may be billions, it
/// calls @p take_cycle, which answers how many addresses it has taken; where it took none, and everywhere
/// else, @p take_run with the run of equal words. Words that are not set make runs too.
template <class TakeCycle, class TakeRun>
void for_each_cycle_or_run(const image_words& words, TakeCycle&& take_cycle, TakeRun&& take_run) {
    cycle_finder cycles(words);
    const auto take_some = [&](std::uint64_t first) -> std::uint64_t {
        const auto cycle = cycles.find(first);
        return cycle ? take_cycle(*cycle) : 0;
    };
    for_each_part(words, take_some, take_run);
}

/// Takes a row and the offset of its first word, or a cycle, and answers how many of the words it has taken.
using row_taker = std::function<std::uint64_t(const kvr::word_row& row, std::uint64_t first)>;
using cycle_taker = std::function<std::uint64_t(const text_cycle& cycle)>;

/// How many words from @p first on @p take_row has taken, where they stand in a row, or @p take_cycle, where
/// they are a cycle; 0 where they are neither.
[[nodiscard]] std::uint64_t take_row_or_cycle(const image_words& words, cycle_finder& cycles,
                                              std::uint64_t first, const row_taker& take_row,
                                              const cycle_taker& take_cycle);

/// Calls @p take with @p run if its words are set.
template <class Take>
void take_set_run(const text_run& run, Take& take) {
    if (!run.text.empty()) {
        take(run);
    }
}

/// Goes over the words that are set, in order. Where they stand in a row it calls @p take_row with the row
/// and the address of its first word, and where they are a cycle @p take_cycle with it, which answer how many
/// of the words they have taken; where these took none, and everywhere else, @p take_run with the run of
/// equal words.
template <class TakeRow, class TakeCycle, class TakeRun>
void for_each_row_cycle_or_run(const image_words& words, TakeRow&& take_row, TakeCycle&& take_cycle,
                               TakeRun&& take_run) {
    cycle_finder cycles(words);
    const row_taker rows = std::ref(take_row);
    const cycle_taker all_of_cycle = std::ref(take_cycle);
    const auto take_some = [&](std::uint64_t first) {
        return take_row_or_cycle(words, cycles, first, rows, all_of_cycle);
    };
    for_each_part(words, take_some, [&take_run](const text_run& run) { take_set_run(run, take_run); });
}

/// The same where cycles are of no interest.
template <class TakeRow, class TakeRun>
void for_each_row_or_run(const image_words& words, TakeRow&& take_row, TakeRun&& take_run) {
    for_each_row_cycle_or_run(
        words, take_row, [](const text_cycle&) { return std::uint64_t{0}; }, take_run);
}

/// Calls @p take, which may ask @p words for texts, with the offsets of the first and last word of stretches
/// that are set, in order. Neighbours may be two stretches.
template <class Take>
void for_each_set_stretch(const image_words& words, Take&& take) {
    if (const byte_words* const bytes = words.bytes()) {
        const std::uint32_t bytes_per_word = bytes->bytes_per_word();
        const auto blocks = bytes->blocks(); // a copy: the first call may turn the words into texts
        for (const byte_words::block& block : blocks) {
            take(block.first, block.last(bytes_per_word));
        }
        return;
    }
    const auto take_row = [&take](const kvr::word_row& row, std::uint64_t first) {
        take(first, first + row.count - 1);
        return row.count;
    };
    const auto take_cycle = [&take](const text_cycle& cycle) {
        take(cycle.first, cycle.last);
        return cycle.length();
    };
    for_each_row_cycle_or_run(words, take_row, take_cycle,
                              [&take](const text_run& run) { take(run.first, run.last); });
}

} // namespace kvrimage

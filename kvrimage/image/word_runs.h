#pragma once

#include "kvrimage/image/differing_runs.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/work_position.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>

namespace kvrimage {

/// Calls @p visit with every run of equal words of the addresses from @p first to before @p end, which are
/// all in
/// @p words, in order and cut to them. Words that are not set make runs too: their text is "". @p visit may
/// change the words of its run.
template <class Visit>
void for_each_run(const image_words& words, std::uint64_t first, std::uint64_t end, Visit&& visit) {
    for (std::uint64_t address = first; address < end;) {
        text_run run = words.run_at(address);
        run.last = std::min(run.last, end - 1);
        address = run.last + 1;
        visit(run);
    }
}

/// The same over all of @p words.
template <class Visit>
void for_each_run(const image_words& words, Visit&& visit) {
    for_each_run(words, 0, words.size(), visit);
}

/// Calls @p visit with every run of equal words of @p words that are set, in order.
template <class Visit>
void for_each_set_run(const image_words& words, Visit&& visit) {
    for_each_run(words, [&visit](const text_run& run) {
        if (!run.text.empty()) {
            visit(run);
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

/// Goes over the words, in order. @p visit_some is called with an address and answers how many words it has
/// visited from there on; where it visited none, @p visit_run gets the run of equal words. Words that were
/// not set make runs too.
template <class VisitSome, class VisitRun>
void for_each_part(const image_words& words, VisitSome&& visit_some, VisitRun&& visit_run) {
    for (std::uint64_t address = 0; address < words.size();) {
        note_work(address, words.size());
        if (const std::uint64_t visited = visit_some(address)) {
            address += visited;
            continue;
        }
        const text_run run = words.run_at(address);
        address = run.last + 1;
        visit_run(run);
    }
}

/// Goes over the words, in order. Where a fill has made a cycle of several words, which may be billions, it
/// calls @p visit_cycle, which answers how many addresses it has visited; where it visited none, and
/// everywhere else, @p visit_run with the run of equal words. Words that are not set make runs too.
template <class VisitCycle, class VisitRun>
void for_each_cycle_or_run(const image_words& words, VisitCycle&& visit_cycle, VisitRun&& visit_run) {
    cycle_finder cycles(words);
    const auto visit_some = [&](std::uint64_t first) -> std::uint64_t {
        const auto cycle = cycles.find(first);
        return cycle ? visit_cycle(*cycle) : 0;
    };
    for_each_part(words, visit_some, visit_run);
}

/// Takes a row and the offset of its first word, or a cycle, and answers how many of the words it has
/// visited.
using row_visitor = std::function<std::uint64_t(const kvr::word_row& row, std::uint64_t first)>;
using cycle_visitor = std::function<std::uint64_t(const text_cycle& cycle)>;

/// How many words from @p first on @p visit_row has visited, where they stand in a row, or @p visit_cycle,
/// where they are a cycle; 0 where they are neither.
[[nodiscard]] std::uint64_t visit_row_or_cycle(const image_words& words, cycle_finder& cycles,
                                               std::uint64_t first, const row_visitor& visit_row,
                                               const cycle_visitor& visit_cycle);

/// Calls @p visit with @p run if its words are set.
template <class Visit>
void visit_set_run(const text_run& run, Visit& visit) {
    if (!run.text.empty()) {
        visit(run);
    }
}

/// Goes over the words that are set, in order. Where they stand in a row it calls @p visit_row with the row
/// and the address of its first word, and where they are a cycle @p visit_cycle with it, which answer how
/// many of the words they have visited; where these visited none, and everywhere else, @p visit_run with the
/// run of equal words.
template <class VisitRow, class VisitCycle, class VisitRun>
void for_each_row_cycle_or_run(const image_words& words, VisitRow&& visit_row, VisitCycle&& visit_cycle,
                               VisitRun&& visit_run) {
    cycle_finder cycles(words);
    const row_visitor rows = std::ref(visit_row);
    const cycle_visitor all_of_cycle = std::ref(visit_cycle);
    const auto visit_some = [&](std::uint64_t first) {
        return visit_row_or_cycle(words, cycles, first, rows, all_of_cycle);
    };
    for_each_part(words, visit_some, [&visit_run](const text_run& run) { visit_set_run(run, visit_run); });
}

/// The same where cycles are of no interest.
template <class VisitRow, class VisitRun>
void for_each_row_or_run(const image_words& words, VisitRow&& visit_row, VisitRun&& visit_run) {
    for_each_row_cycle_or_run(
        words, visit_row, [](const text_cycle&) { return std::uint64_t{0}; }, visit_run);
}

/// Calls @p visit, which may ask @p words for texts, with the offsets of the first and last word of stretches
/// that are set, in order. Neighbours may be two stretches.
template <class Visit>
void for_each_set_stretch(const image_words& words, Visit&& visit) {
    if (const byte_words* const bytes = words.bytes()) {
        const std::uint32_t bytes_per_word = bytes->bytes_per_word();
        const auto blocks = bytes->blocks(); // a copy: the first call may turn the words into texts
        for (const byte_words::block& block : blocks) {
            visit(block.first, block.last(bytes_per_word));
        }
        return;
    }
    const auto visit_row = [&visit](const kvr::word_row& row, std::uint64_t first) {
        visit(first, first + row.count - 1);
        return row.count;
    };
    const auto visit_cycle = [&visit](const text_cycle& cycle) {
        visit(cycle.first, cycle.last);
        return cycle.length();
    };
    for_each_row_cycle_or_run(words, visit_row, visit_cycle,
                              [&visit](const text_run& run) { visit(run.first, run.last); });
}

} // namespace kvrimage

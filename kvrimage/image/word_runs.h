#pragma once

#include "kvrimage/image/differing_runs.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/work_position.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>

namespace kvrimage {

/// Calls @p visit for each run of equal words at the offsets @p first to @p end - 1, in order. The runs are
/// cut to this range, which must lie in @p words. Words that are not set form runs with the text "". @p visit
/// may change the words of its run.
template <class Visit>
void for_each_run(const image_words& words, std::uint64_t first, std::uint64_t end, Visit&& visit) {
    for (std::uint64_t address = first; address < end;) {
        text_run run = words.run_at(address);
        run.last = std::min(run.last, end - 1);
        address = run.last + 1;
        visit(run);
    }
}

/// Calls @p visit for each run of @p words.
template <class Visit>
void for_each_run(const image_words& words, Visit&& visit) {
    for_each_run(words, 0, words.size(), visit);
}

/// Calls @p visit for each run of words that are set, in order.
template <class Visit>
void for_each_set_run(const image_words& words, Visit&& visit) {
    for_each_run(words, [&visit](const text_run& run) {
        if (!run.text.empty()) {
            visit(run);
        }
    });
}

/// Returns the number of addresses of a run or a cycle.
template <class Stretch>
[[nodiscard]] std::uint64_t length_of(const Stretch& run) {
    return run.last - run.first + 1;
}

/// Finds the cycles of more than one word during a walk over a memory. It reports each cycle once.
class cycle_finder {
public:
    explicit cycle_finder(const image_words& looked_through) : words(looked_through) {}

    /// Returns the cycle from @p address on if it has at least two full periods and was not reported before.
    /// All its words are set, since only whole ranges are set to "".
    [[nodiscard]] std::optional<text_cycle> find(std::uint64_t address);

private:
    const image_words& words;
    std::uint64_t known_until = 0;
};

/// Walks over the words in order. @p visit_some(address) returns the number of words it has visited from
/// there on. If it returns 0, @p visit_run gets the run at that address. Words that are not set form runs
/// too.
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

/// Walks over the words in order. @p visit_cycle gets each cycle of several words, which may cover billions
/// of addresses, and returns the number of addresses it has visited. @p visit_run gets the run at all other
/// addresses, and if @p visit_cycle returns 0. Words that are not set form runs too.
template <class VisitCycle, class VisitRun>
void for_each_cycle_or_run(const image_words& words, VisitCycle&& visit_cycle, VisitRun&& visit_run) {
    cycle_finder cycles(words);
    const auto visit_some = [&](std::uint64_t first) -> std::uint64_t {
        const auto cycle = cycles.find(first);
        return cycle ? visit_cycle(*cycle) : 0;
    };
    for_each_part(words, visit_some, visit_run);
}

/// Callbacks for a row with the offset of its first word, and for a cycle. They return the number of words
/// they have visited.
using row_visitor = std::function<std::uint64_t(const kvr::word_row& row, std::uint64_t first)>;
using cycle_visitor = std::function<std::uint64_t(const text_cycle& cycle)>;

/// Calls @p visit_row if there is a row at @p first, or else @p visit_cycle if there is a cycle. Returns the
/// number of words visited, or 0 if there is neither.
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

/// Walks over the words that are set, in order. @p visit_row gets each row with the address of its first
/// word, @p visit_cycle each cycle; both return the number of words they have visited. @p visit_run gets the
/// run of equal words at all other addresses, and if the others return 0.
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

/// Like for_each_row_cycle_or_run(), with cycles treated as runs.
template <class VisitRow, class VisitRun>
void for_each_row_or_run(const image_words& words, VisitRow&& visit_row, VisitRun&& visit_run) {
    for_each_row_cycle_or_run(
        words, visit_row, [](const text_cycle&) { return std::uint64_t{0}; }, visit_run);
}

/// Calls @p visit with the first and last offset of each stretch of words that are set, in order. Adjacent
/// words may belong to two stretches. @p visit may request texts from @p words.
template <class Visit>
void for_each_set_stretch(const image_words& words, Visit&& visit) {
    if (const byte_words* const bytes = words.bytes()) {
        const std::uint32_t bytes_per_word = bytes->bytes_per_word();
        const auto blocks = bytes->blocks(); // a copy: the first call may convert the words to texts
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

#pragma once

#include "kvr/memory/word_store.h"

#include <algorithm>
#include <cstdint>

namespace kvrmem {

/// Calls @p take with every run of equal words of the addresses @p first to @p last (inclusive), in order and
/// cut to them. Words that were never set make runs too: their text is "". Addresses behind the end of
/// @p words are left out. @p take may change the words of its run.
template <class Take>
void for_each_run(const kvr::word_store& words, std::uint64_t first, std::uint64_t last, Take&& take) {
    for (std::uint64_t address = first; address <= last && address < words.size();) {
        kvr::word_run run = words.run_at(static_cast<std::uint32_t>(address));
        run.first = static_cast<std::uint32_t>(address);
        run.last = static_cast<std::uint32_t>(std::min<std::uint64_t>(run.last, last));
        address = std::uint64_t{run.last} + 1;
        take(run);
    }
}

/// The same over all of @p words.
template <class Take>
void for_each_run(const kvr::word_store& words, Take&& take) {
    for_each_run(words, 0, words.size(), take);
}

/// Calls @p take with every run of equal words of @p words that are set, in order.
template <class Take>
void for_each_set_run(const kvr::word_store& words, Take&& take) {
    for_each_run(words, [&take](const kvr::word_run& run) {
        if (!run.text.empty()) {
            take(run);
        }
    });
}

/// Goes over the words that are set, in order. Where they stand in a row it calls @p take_row with the row
/// and the address of its first word, which answers how many of them it has taken; where it took none, and
/// everywhere else, @p take_run with the run of equal words.
template <class TakeRow, class TakeRun>
void for_each_row_or_run(const kvr::word_store& words, TakeRow&& take_row, TakeRun&& take_run) {
    for (std::uint64_t address = 0; address < words.size();) {
        const auto first = static_cast<std::uint32_t>(address);
        const kvr::word_row row = words.row_at(first);
        if (row.count != 0 && row.length != 0) {
            if (const std::uint32_t taken = take_row(row, first)) {
                address += taken;
                continue;
            }
        }
        const kvr::word_run run = words.run_at(first);
        if (!run.text.empty()) {
            take_run(run);
        }
        address = std::uint64_t{run.last} + 1;
    }
}

/// How many addresses @p run covers.
[[nodiscard]] inline std::uint64_t length_of(const kvr::word_run& run) {
    return std::uint64_t{run.last} - run.first + 1;
}

} // namespace kvrmem

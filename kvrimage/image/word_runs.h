#pragma once

#include "kvrimage/image/image_words.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <optional>

namespace kvrimage {

/// Calls @p take with every run of equal words of the addresses @p first to @p last (inclusive), in order and
/// cut to them. Words that were never set make runs too: their text is "". Addresses behind the end of
/// @p words are left out. @p take may change the words of its run.
template <class Take>
void for_each_run(const image_words& words, std::uint64_t first, std::uint64_t last, Take&& take) {
    for (std::uint64_t address = first; address <= last && address < words.size();) {
        text_run run = words.run_at(address);
        run.last = std::min(run.last, last);
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
    /// words are set, since a file or a person has given them.
    [[nodiscard]] std::optional<text_cycle> find(std::uint64_t address) {
        if (address < known_until) {
            return std::nullopt;
        }
        const text_cycle cycle = words.cycle_at(address);
        known_until = cycle.last + 1;
        return cycle.period > 1 && length_of(cycle) / cycle.period >= 2 ? std::optional(cycle) : std::nullopt;
    }

private:
    const image_words& words;
    std::uint64_t known_until = 0;
};

/// Goes over the words, in order. @p take_some is called with an address and answers how many words it has
/// taken from there on; where it took none, @p take_run gets the run of equal words. Words that were never
/// set make runs too.
template <class TakeSome, class TakeRun>
void for_each_part(const image_words& words, TakeSome&& take_some, TakeRun&& take_run) {
    for (std::uint64_t address = 0; address < words.size();) {
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
/// else, @p take_run with the run of equal words. Words that were never set make runs too.
template <class TakeCycle, class TakeRun>
void for_each_cycle_or_run(const image_words& words, TakeCycle&& take_cycle, TakeRun&& take_run) {
    cycle_finder cycles(words);
    const auto take_some = [&](std::uint64_t first) -> std::uint64_t {
        const auto cycle = cycles.find(first);
        return cycle ? take_cycle(*cycle) : 0;
    };
    for_each_part(words, take_some, take_run);
}

/// Goes over the words that are set, in order. Where they stand in a row it calls @p take_row with the row
/// and the address of its first word, and where they are a cycle @p take_cycle with it, which answer how many
/// of the words they have taken; where these took none, and everywhere else, @p take_run with the run of
/// equal words.
template <class TakeRow, class TakeCycle, class TakeRun>
void for_each_row_cycle_or_run(const image_words& words, TakeRow&& take_row, TakeCycle&& take_cycle,
                               TakeRun&& take_run) {
    cycle_finder cycles(words);
    const auto take_some = [&](std::uint64_t first) -> std::uint64_t {
        const kvr::word_row row = words.row_at(first);
        if (row.count != 0 && row.length != 0) {
            if (const std::uint32_t taken = take_row(row, first)) {
                return taken;
            }
        }
        const auto cycle = cycles.find(first);
        return cycle ? take_cycle(*cycle) : 0;
    };
    for_each_part(words, take_some, [&take_run](const text_run& run) {
        if (!run.text.empty()) {
            take_run(run);
        }
    });
}

/// The same where cycles are of no interest.
template <class TakeRow, class TakeRun>
void for_each_row_or_run(const image_words& words, TakeRow&& take_row, TakeRun&& take_run) {
    for_each_row_cycle_or_run(
        words, take_row, [](const text_cycle&) { return std::uint64_t{0}; }, take_run);
}

/// Goes over two memories at once and skips what is the same cycle in both, without a look at each word.
class same_cycle_finder {
public:
    same_cycle_finder(const image_words& first_words, const image_words& second_words)
        : one(first_words),
          other(second_words) {}

    /// How many addresses from @p address on hold the same words in both, as @p same (one word, the other)
    /// judges; 0 where that is not found out at once.
    template <class Same>
    [[nodiscard]] std::uint64_t find(std::uint64_t address, Same&& same) {
        if (address < known_until || address >= one.size() || address >= other.size()) {
            return 0;
        }
        const text_cycle in_one = one.cycle_at(address);
        const text_cycle in_other = other.cycle_at(address);
        const std::uint64_t last = std::min(in_one.last, in_other.last);
        known_until = last + 1;
        const std::uint64_t period = std::lcm(std::uint64_t{in_one.period}, std::uint64_t{in_other.period});
        const std::uint64_t repeats = period != 0 ? (known_until - address) / period : 0;
        if (repeats < 2) {
            return 0;
        }
        for (std::uint32_t index = 0; index < period; ++index) {
            if (!same(one[address + index], other[address + index])) {
                return 0;
            }
        }
        return repeats * period;
    }

private:
    const image_words& one;
    const image_words& other;
    std::uint64_t known_until = 0;
};

/// Calls @p take (first address, last address, one word, the other) with every stretch over which two
/// memories hold a word each that are not the same, as @p same (one word, the other) judges, in order. Behind
/// the end of a memory its words are "".
template <class Same, class Take>
void for_each_differing_run(const image_words& one, const image_words& other, Same&& same,
                            Take&& take) {
    const std::uint64_t end = std::max(one.size(), other.size());
    const auto run_in = [end](const image_words& words, std::uint64_t address) {
        return address < words.size() ? words.run_at(address) : text_run{address, end - 1, ""};
    };
    same_cycle_finder cycles(one, other);
    for (std::uint64_t address = 0; address < end;) {
        if (const std::uint64_t alike = cycles.find(address, same)) {
            address += alike;
            continue;
        }
        const text_run in_one = run_in(one, address);
        const text_run in_other = run_in(other, address);
        const std::uint64_t last = std::min(in_one.last, in_other.last);
        if (!same(in_one.text, in_other.text)) {
            take(address, last, in_one.text, in_other.text);
        }
        address = last + 1;
    }
}

} // namespace kvrimage

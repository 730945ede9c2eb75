#pragma once

#include "kvr/memory/store/word_store.h"

#include <algorithm>
#include <cstdint>

namespace kvr_fuzz {

/// The number of runs of equal words that are compared. A line of two alternating values makes a billion
/// runs.
inline constexpr int most_runs = 200;

/// True if @p words has more than `most_runs` runs.
inline bool has_many_runs(const kvr::word_store& words) {
    std::uint64_t address = 0;
    for (int runs = 0; runs < most_runs && address < words.size(); ++runs) {
        address = std::uint64_t{words.run_at(static_cast<std::uint32_t>(address)).last} + 1;
    }
    return address < words.size();
}

/// True if both stores have the same size and hold the same texts from the address @p address on, within the
/// first @p runs runs.
inline bool same_words(const kvr::word_store& left, const kvr::word_store& right, std::uint64_t address = 0,
                       int runs = most_runs) {
    if (left.size() != right.size()) {
        return false;
    }
    for (; runs > 0 && address < left.size(); --runs) {
        const kvr::word_run one = left.run_at(static_cast<std::uint32_t>(address));
        const kvr::word_run other = right.run_at(static_cast<std::uint32_t>(address));
        if (one.last != other.last || one.text != other.text) {
            return false;
        }
        address = std::uint64_t{one.last} + 1;
    }
    return true;
}

} // namespace kvr_fuzz

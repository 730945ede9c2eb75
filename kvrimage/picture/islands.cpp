#include "kvrimage/picture/islands.h"

#include "kvrimage/image/word_runs.h"

#include <algorithm>
#include <cmath>

namespace kvrimage {

namespace {

std::uint64_t distance_in(const address_range& range) {
    return range.last - range.first;
}

bool is_longer(const address_range& left, const address_range& right) {
    return distance_in(left) != distance_in(right) ? distance_in(left) > distance_in(right)
                                                   : left.first < right.first;
}

/// Keeps the longest gaps.
class longest_gaps {
public:
    void add(std::uint64_t first, std::uint64_t last) {
        gaps.push_back({first, last});
        std::ranges::push_heap(gaps, is_longer);
        if (gaps.size() > set_words::most_gaps) {
            std::ranges::pop_heap(gaps, is_longer);
            gaps.pop_back();
        }
    }
    [[nodiscard]] std::vector<address_range> in_order() {
        std::ranges::sort(gaps, {}, &address_range::first);
        return std::move(gaps);
    }

private:
    std::vector<address_range> gaps; ///< a heap with the shortest gap first
};

/// Returns the gaps to leave out: long ones, without the first and the last offset.
std::vector<address_range> gaps_to_leave_out(std::uint64_t first, std::uint64_t last, const set_words& set,
                                             const picture_room& room) {
    constexpr std::uint64_t by_far = 4;
    std::vector<address_range> cut;
    if (set.count == 0 || last - first < room.units) {
        return cut;
    }
    for (address_range gap : set.gaps) {
        gap.first += gap.first == first ? 1 : 0;
        gap.last -= gap.last == last ? 1 : 0;
        if (distance_in(gap) / by_far >= set.count) {
            cut.push_back(gap);
        }
    }
    const std::size_t most = (room.units + room.a_break) / (room.least_part + room.a_break);
    const std::size_t kept = std::min(cut.size(), std::max<std::size_t>(most, 1) - 1);
    std::ranges::sort(cut, is_longer);
    cut.resize(kept);
    std::ranges::sort(cut, {}, &address_range::first);
    return cut;
}

double words_in(const address_range& range) {
    return static_cast<double>(distance_in(range)) + 1;
}

} // namespace

set_words set_words_of(const image_words& words, std::uint64_t first, std::uint64_t last) {
    set_words found;
    longest_gaps gaps;
    std::uint64_t next = first;
    const auto take = [&](std::uint64_t begin, std::uint64_t end) {
        if (end < first || begin > last) {
            return;
        }
        begin = std::max(begin, first);
        end = std::min(end, last);
        found.count += end - begin + 1;
        if (begin > next) {
            gaps.add(next, begin - 1);
        }
        next = end + 1;
    };
    for_each_set_stretch(words, take);
    if (next <= last) {
        gaps.add(next, last);
    }
    found.gaps = gaps.in_order();
    return found;
}

std::vector<address_range> common_gaps(const std::vector<address_range>& left,
                                       const std::vector<address_range>& right) {
    std::vector<address_range> common;
    for (auto at = left.begin(), other = right.begin(); at != left.end() && other != right.end();) {
        const address_range both{std::max(at->first, other->first), std::min(at->last, other->last)};
        if (both.first <= both.last) {
            common.push_back(both);
        }
        at->last < other->last ? ++at : ++other;
    }
    return common;
}

std::vector<shown_stretch> shown_stretches(std::uint64_t first, std::uint64_t last, const set_words& set,
                                           const picture_room& room) {
    std::vector<address_range> parts{{first, last}};
    for (const address_range& gap : gaps_to_leave_out(first, last, set, room)) {
        parts.back().last = gap.first - 1;
        parts.push_back({gap.last + 1, last});
    }
    if (parts.size() == 1) {
        return {{first, last, 0, room.units}};
    }
    double all_words = 0;
    for (const address_range& part : parts) {
        all_words += words_in(part);
    }
    const auto count = static_cast<std::uint32_t>(parts.size());
    const double spare = room.units - count * room.least_part - (count - 1) * room.a_break;
    std::vector<shown_stretch> stretches;
    std::uint32_t begin = 0;
    double words_before = 0;
    for (const address_range& part : parts) {
        // Round the running sums, so that all room is used.
        const double share_before = std::floor(spare * words_before / all_words);
        words_before += words_in(part);
        const double share = std::floor(spare * words_before / all_words) - share_before;
        stretches.push_back(
            {part.first, part.last, begin, room.least_part + static_cast<std::uint32_t>(share)});
        begin += stretches.back().room + room.a_break;
    }
    return stretches;
}

} // namespace kvrimage

#include "kvrimage/operations/merge.h"

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_copy.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_stretch.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace kvrimage {

namespace {

/// Returns a memory without words that spans the addresses of @p parts.
memory_image room_for(std::span<const memory_image> parts) {
    if (parts.empty()) {
        throw std::invalid_argument("nothing to merge");
    }
    const memory_image& first = parts.front();
    address_range all = {first.base(), first.last_address()};
    for (std::size_t index = 1; index < parts.size(); ++index) {
        if (parts[index].width() != first.width()) {
            throw std::invalid_argument(fmt::format("memory {} has words of {} bits, memory 0 of {}", index,
                                                    parts[index].width(), first.width()));
        }
        all = {std::min(all.first, parts[index].base()), std::max(all.last, parts[index].last_address())};
    }
    if (all.last - all.first >= deepest_memory) {
        throw std::out_of_range(fmt::format(
            "the memory would have the addresses 0x{:X} to 0x{:X}, more than 2^32", all.first, all.last));
    }
    return {first.width(), all.last - all.first + 1, all.first};
}

/// Returns the first address of @p range at which @p left and @p right differ, or nothing. Both have words in
/// all of @p range.
std::optional<std::uint64_t> first_difference(const memory_image& left, const memory_image& right,
                                              const address_range& range) {
    row_reader left_words(left.words());
    row_reader right_words(right.words());
    for (std::uint64_t address = range.first;;) {
        const word_stretch of_left = stretch_at(left.words(), address - left.base());
        const word_stretch of_right = stretch_at(right.words(), address - right.base());
        const std::uint64_t last =
            std::min({range.last, left.base() + of_left.last, right.base() + of_right.last});
        const std::uint64_t period = std::lcm(of_left.period, of_right.period);
        const std::uint64_t compared = std::min(last - address + 1, period);
        for (std::uint64_t each = address; each < address + compared; ++each) {
            if (left_words[each - left.base()] != right_words[each - right.base()]) {
                return each;
            }
        }
        if (last == range.last) {
            return std::nullopt; // `last + 1` could wrap
        }
        address = last + 1;
    }
}

class merger {
public:
    merger(std::span<const memory_image> merged_parts, overlap_rule overlaps_by)
        : parts(merged_parts),
          rule(overlaps_by),
          made(room_for(merged_parts)) {
        result.parts.resize(parts.size());
    }

    [[nodiscard]] merge_result take_all() {
        for (std::size_t rank = 0; rank < parts.size(); ++rank) {
            const memory_image& part = parts[part_of(rank)];
            for_each_set_stretch(part.words(), [&](std::uint64_t first, std::uint64_t last) {
                take(rank, {part.base() + first, part.base() + last}, 0);
            });
        }
        if (is_allowed) {
            result.image = std::move(made);
        }
        return std::move(result);
    }

private:
    /// Returns the memory with precedence @p rank; rank 0 wins over all others.
    [[nodiscard]] std::size_t part_of(std::size_t rank) const {
        return rule == overlap_rule::last ? parts.size() - 1 - rank : rank;
    }

    /// Adds the words of @p range, which are set, from the memory of @p rank. The memories of ranks below
    /// @p free are known to have none there.
    void take(std::size_t rank, const address_range& range, std::size_t free) {
        if (free == rank) {
            copy(part_of(rank), range);
            return;
        }
        for (std::uint64_t address = range.first;;) {
            const auto [last, is_set] = part_stretch(parts[part_of(free)], {address, range.last});
            if (is_set) {
                note_overlap({{address, last}, part_of(free), part_of(rank), std::nullopt});
            } else {
                take(rank, {address, last}, free + 1);
            }
            if (last == range.last) {
                return; // `last + 1` could wrap
            }
            address = last + 1;
        }
    }
    struct known_stretch {
        std::uint64_t last;
        bool is_set;
    };
    /// Returns the stretch at the start of @p range in which @p part has words, or has none.
    static known_stretch part_stretch(const memory_image& part, const address_range& range) {
        if (range.first > part.last_address()) {
            return {range.last, false};
        }
        if (range.first < part.base()) {
            return {std::min(range.last, part.base() - 1), false};
        }
        const word_stretch found = stretch_at(part.words(), range.first - part.base());
        return {std::min(range.last, part.base() + found.last), found.is_set};
    }

    void copy(std::size_t from, const address_range& range) {
        const memory_image& part = parts[from];
        copy_words(part.words(), range.first - part.base(), range.last - part.base(), made.words(),
                   range.first - made.base());
        merged_part& known = result.parts[from];
        known.words += range.last - range.first + 1;
        if (!known.ranges.empty() && known.ranges.back().last + 1 == range.first) {
            known.ranges.back().last = range.last;
        } else if (known.ranges.size() < most_merge_ranges) {
            known.ranges.push_back(range);
        }
    }
    void note_overlap(merge_overlap found) {
        found.difference = first_difference(parts[found.kept], parts[found.other], found.addresses);
        is_allowed =
            is_allowed && rule != overlap_rule::refuse && (rule != overlap_rule::same || !found.difference);
        if (overlap_end == found.addresses.first && overlap_parts == std::pair(found.kept, found.other)) {
            lengthen_overlap(found);
        } else {
            ++result.overlap_count;
            if (result.overlaps.size() < most_merge_ranges) {
                result.overlaps.push_back(found);
            }
        }
        overlap_end = found.addresses.last + 1;
        overlap_parts = {found.kept, found.other};
    }
    void lengthen_overlap(const merge_overlap& by) {
        if (result.overlap_count > most_merge_ranges) {
            return; // the last overlap is not listed
        }
        merge_overlap& last = result.overlaps.back();
        last.addresses.last = by.addresses.last;
        last.difference = last.difference ? last.difference : by.difference;
    }

    std::span<const memory_image> parts;
    overlap_rule rule;
    memory_image made;
    merge_result result;
    bool is_allowed = true;
    std::uint64_t overlap_end = 0; ///< address after the last overlap
    std::pair<std::size_t, std::size_t> overlap_parts = {0, 0};
};

} // namespace

merge_result merged(std::span<const memory_image> parts, overlap_rule rule) {
    return merger(parts, rule).take_all();
}

} // namespace kvrimage

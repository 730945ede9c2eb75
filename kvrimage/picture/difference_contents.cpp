#include "kvrimage/diagnostics/counted.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/picture/picture_contents.h"
#include "kvrimage/picture/shown_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Returns the part of @p range that lies in @p image, or nothing.
std::optional<address_range> part_in(const memory_image& image, const address_range& range) {
    const address_range part{std::max(range.first, image.base()), std::min(range.last, image.last_address())};
    return part.first <= part.last ? std::optional(part) : std::nullopt;
}

/// Returns the summary of @p range, with offsets from its first address.
set_words set_words_within(const memory_image& image, const address_range& range) {
    const std::uint64_t end = range.last - range.first;
    const std::optional<address_range> part = part_in(image, range);
    if (!part) {
        return {0, {{0, end}}};
    }
    set_words set = set_words_of(image.words(), part->first - image.base(), part->last - image.base());
    const std::uint64_t ahead = part->first - range.first;
    const std::uint64_t after = part->last - range.first;
    const std::uint64_t first_offset = part->first - image.base();
    for (address_range& gap : set.gaps) {
        gap = {gap.first - first_offset + ahead, gap.last - first_offset + ahead};
    }
    // Addresses outside the memory are gaps too.
    if (ahead != 0) {
        set.gaps.insert(set.gaps.begin(), {0, ahead - 1});
    }
    if (after != end) {
        set.gaps.push_back({after + 1, end});
    }
    return set;
}

/// Merges adjacent gaps.
std::vector<address_range> without_borders(const std::vector<address_range>& gaps) {
    std::vector<address_range> whole;
    for (const address_range& gap : gaps) {
        if (!whole.empty() && whole.back().last + 1 == gap.first) {
            whole.back().last = gap.last;
        } else {
            whole.push_back(gap);
        }
    }
    return whole;
}

std::string counts_of(const difference_map& map) {
    return fmt::format("{} changed, {} only in A, {} only in B",
                       counted(map.total(difference_kind::changed), "word"),
                       map.total(difference_kind::left_only), map.total(difference_kind::right_only));
}

std::string name_of_pair(const difference_options& options) {
    const std::string left = shown_name(options.left.name);
    const std::string right = shown_name(options.right.name);
    if (left.empty() && right.empty()) {
        return "";
    }
    return fmt::format("A: {}  B: {}", left, right);
}

/// Returns "A: MIF, 256 words of 16 bits, 12 set".
std::string title_of_side(char side, const memory_image& image, const compared_memory& shown) {
    return fmt::format("{}: {}{}", side,
                       title_of_picture(image, shown.format_title, {image.base(), image.last_address()}),
                       set_note(image.count_set(), image.depth()));
}

} // namespace

picture_contents contents_of_difference(const memory_image& left, const memory_image& right,
                                        const difference_options& options, const picture_size& size) {
    const address_range range = drawn_addresses(
        {std::min(left.base(), right.base()), std::max(left.last_address(), right.last_address())},
        options.range);
    const std::uint64_t end = range.last - range.first;
    const set_words left_set = set_words_within(left, range);
    const set_words right_set = set_words_within(right, range);
    const set_words set{left_set.count + right_set.count,
                        common_gaps(without_borders(left_set.gaps), without_borders(right_set.gaps))};
    const picture_grids grids = grids_for(0, end, set, range.first, size);
    difference_map map(grids.columns);
    occupancy_strip strip(grids.strip);
    strip.take({0, end, ""});
    const std::vector<address_range> where = {range};
    for_each_difference(left, right, where, [&](const difference& found) {
        const address_range offsets{found.addresses.first - range.first, found.addresses.last - range.first};
        map.take(found, offsets);
        if (!found.right) {
            strip.add_set(offsets.first, offsets.last);
        }
    });
    // Words set in A only were counted above.
    for_each_set_stretch(right.words(), [&](std::uint64_t first, std::uint64_t last) {
        if (const auto part = part_in(right, range);
            part && right.base() + last >= part->first && right.base() + first <= part->last) {
            strip.add_set(std::max(right.base() + first, part->first) - range.first,
                          std::min(right.base() + last, part->last) - range.first);
        }
    });
    std::vector<std::string> notes = {title_of_side('A', left, options.left),
                                      title_of_side('B', right, options.right)};
    if (const std::string breaks = note_on_breaks(grids.columns); !breaks.empty()) {
        notes.push_back(breaks);
    }
    return {name_of_pair(options), counts_of(map), "words that differ",
            std::move(notes),      grids.columns,  address_axis(grids.columns, range.first),
            std::move(strip),      std::move(map)};
}

} // namespace kvrimage

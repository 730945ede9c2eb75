#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kvrimage {

/// How addresses that several memories set are resolved.
enum class overlap_rule : std::uint8_t {
    refuse, ///< overlaps are not allowed
    same,   ///< allowed if the words are equal
    first,  ///< the first memory with a word there wins
    last    ///< the last memory with a word there wins
};

/// The most ranges of one memory, and the most overlaps, that a report lists.
inline constexpr std::size_t most_merge_ranges = 100;

/// The part of a memory that is in the merged one.
struct merged_part {
    std::uint64_t words = 0;           ///< number of its words
    std::vector<address_range> ranges; ///< their addresses in order; the lowest most_merge_ranges ranges
};

/// Adjacent addresses that two memories set. If more than two memories do, each of the others overlaps with
/// the one whose words are kept.
struct merge_overlap {
    address_range addresses; ///< the addresses
    std::size_t kept;        ///< index of the memory whose words are kept
    std::size_t other;       ///< index of the other memory
    std::optional<std::uint64_t>
        difference; ///< the lowest address at which the words differ; nothing if all are equal

    /// Compares all four members.
    friend bool operator==(const merge_overlap&, const merge_overlap&) = default;
};

/// The result of a merge.
struct merge_result {
    std::optional<memory_image> image; ///< nothing if the rule forbids an overlap
    std::vector<merged_part> parts;    ///< for each memory, in the order given
    std::vector<merge_overlap>
        overlaps; ///< by memory, then in order of addresses; the first most_merge_ranges of them
    std::uint64_t overlap_count = 0; ///< the number of all overlaps
};

/// Merges the words of all @p parts at their addresses. The result spans the lowest to the highest address of
/// all parts. Takes time proportional to the stored content, not to the depths.
/// @throws std::invalid_argument if @p parts is empty or the widths differ
/// @throws std::out_of_range if the addresses span more than one memory can hold
[[nodiscard]] KVRIMAGE_API merge_result merged(std::span<const memory_image> parts, overlap_rule rule);

} // namespace kvrimage

#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kvrimage {

/// What becomes of an address that several memories set.
enum class overlap_rule : std::uint8_t {
    refuse, ///< none may be
    same,   ///< the words must be the same
    first,  ///< the word of the first memory that has one counts
    last    ///< that of the last one
};

/// How many ranges of one memory, and how many overlaps, are kept for a report.
inline constexpr std::size_t most_merge_ranges = 100;

/// What of a memory is in the merged one.
struct merged_part {
    std::uint64_t words = 0;           ///< how many of its words
    std::vector<address_range> ranges; ///< where, in order; the lowest most_merge_ranges of them
};

/// Neighbouring addresses that two memories set. Where more than two do, each but the one whose words are
/// kept makes an overlap with it.
struct merge_overlap {
    address_range addresses; ///< all of them
    std::size_t kept;        ///< the memory whose words count there
    std::size_t other;       ///< the other memory
    std::optional<std::uint64_t>
        difference; ///< the lowest address where the words differ; nothing: they do not

    /// The same in all four.
    friend bool operator==(const merge_overlap&, const merge_overlap&) = default;
};

/// Several memories as one.
struct merge_result {
    std::optional<memory_image> image; ///< nothing when there is an overlap that the rule does not allow
    std::vector<merged_part> parts;    ///< for each memory, in the order in which they were given
    std::vector<merge_overlap>
        overlaps;                    ///< by memory, then in order of addresses; the first most_merge_ranges
    std::uint64_t overlap_count = 0; ///< of all
};

/// The memory that has the words of all @p parts at their addresses: from the lowest address of all to the
/// highest. The cost follows what they hold, not their depths.
/// @throws std::invalid_argument when @p parts are none, or differ in width
/// @throws std::out_of_range when the addresses are too far apart for one memory
[[nodiscard]] KVRIMAGE_API merge_result merged(std::span<const memory_image> parts, overlap_rule rule);

} // namespace kvrimage

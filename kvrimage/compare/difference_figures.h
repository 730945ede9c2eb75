#pragma once

#include "kvrimage/compare/compare.h"
#include "kvrimage/export.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// The differences within a block of addresses.
struct block_figures {
    address_range addresses; ///< the addresses of the block
    std::uint64_t words = 0; ///< number of words that differ
    std::uint64_t bits = 0;  ///< number of bits that differ, in words that both memories have set

    /// Compares all three members.
    friend bool operator==(const block_figures&, const block_figures&) = default;
};

/// A summary of the differences of two memories.
struct difference_figures {
    std::uint64_t words = 0;      ///< addresses at which the words differ
    std::uint64_t ranges = 0;     ///< number of differences that for_each_difference() reports
    std::uint64_t left_only = 0;  ///< of `words`, those set in the left memory only
    std::uint64_t right_only = 0; ///< of `words`, those set in the right memory only
    /// Number of bits that differ, in words that both memories have set. The narrower word is extended with
    /// 0. A don't-care bit differs from 0 and from 1.
    std::uint64_t bits = 0;
    /// For each bit of the wider memory, from bit 0 on, the number of words in which it differs.
    std::vector<std::uint64_t> words_by_bit;
    /// The blocks with differences, in order. All blocks have the same size, the smallest power of two that
    /// divides the memories into at most most_blocks blocks. Blocks begin at multiples of their size; the
    /// first and the last one are cut to the memories.
    std::vector<block_figures> blocks;

    /// The most blocks.
    static constexpr std::uint64_t most_blocks = 16;
};

/// Accumulates the figures from differences, which must come in order of addresses.
class KVRIMAGE_API difference_counter {
public:
    /// Prepares for the differences of these two memories.
    difference_counter(const memory_image& left, const memory_image& right);

    /// Adds a difference. The time does not depend on its number of addresses. If memory runs out, @p found
    /// is not counted.
    void take(const difference& found);
    /// Returns the figures of all differences so far.
    [[nodiscard]] const difference_figures& figures() const noexcept { return counted; }

private:
    [[nodiscard]] std::vector<std::uint32_t> differing_bits(const difference& found) const;
    void add_to_blocks(const address_range& addresses, std::uint64_t bits_a_word);

    difference_figures counted;
    address_range all;        ///< the addresses of both memories
    std::uint64_t block_size; ///< a power of two
};

} // namespace kvrimage

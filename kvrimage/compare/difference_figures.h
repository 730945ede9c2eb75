#pragma once

#include "kvrimage/compare/compare.h"
#include "kvrimage/export.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// How much of some addresses differs.
struct block_figures {
    address_range addresses; ///< of the block
    std::uint64_t words = 0; ///< that differ
    std::uint64_t bits = 0;  ///< that differ, of words that both memories have set

    /// The same in all three.
    friend bool operator==(const block_figures&, const block_figures&) = default;
};

/// How much of two memories differs.
struct difference_figures {
    std::uint64_t words = 0;      ///< addresses at which the words differ
    std::uint64_t ranges = 0;     ///< differences, as for_each_difference() finds them
    std::uint64_t left_only = 0;  ///< of `words`, those that only the left memory has set
    std::uint64_t right_only = 0; ///< likewise
    /// Bits that differ, of words that both have set. A word of fewer bits has 0 in those that it lacks, and
    /// a don't-care bit differs from 0 and from 1.
    std::uint64_t bits = 0;
    /// In how many words each bit differs, from bit 0 on; as many as the wider memory has.
    std::vector<std::uint64_t> words_by_bit;
    /// The blocks of addresses in which words differ, in order: of one size, a power of two, which is the
    /// smallest for which the memories have no more than most_blocks of them. They begin at multiples of it,
    /// and the first and the last one are cut to the memories.
    std::vector<block_figures> blocks;

    /// How many blocks there may be.
    static constexpr std::uint64_t most_blocks = 16;
};

/// Counts differences one after the other, which must come in order of addresses.
class KVRIMAGE_API difference_counter {
public:
    /// For differences of these two.
    difference_counter(const memory_image& left, const memory_image& right);

    /// The time does not depend on how many addresses @p found has. When memory runs out, @p found is not
    /// counted.
    void take(const difference& found);
    /// Of all differences so far.
    [[nodiscard]] const difference_figures& figures() const noexcept { return counted; }

private:
    [[nodiscard]] std::vector<std::uint32_t> differing_bits(const difference& found) const;
    void add_to_blocks(const address_range& addresses, std::uint64_t bits_a_word);

    difference_figures counted;
    address_range all;        ///< addresses of both memories
    std::uint64_t block_size; ///< a power of two
};

} // namespace kvrimage

#include "kvrimage/compare/difference_figures.h"

#include <algorithm>
#include <bit>

namespace kvrimage {

namespace {

/// Returns bit @p index of the word, or '0' beyond its width.
char bit_or_zero(const word& value, std::uint32_t index) {
    return index < value.width() ? value.bit(index) : '0';
}

/// Returns the base-2 logarithm of the block size.
unsigned block_bits_for(const address_range& all) {
    unsigned bits = 0;
    while ((all.last >> bits) - (all.first >> bits) >= difference_figures::most_blocks) {
        ++bits;
    }
    return bits;
}

} // namespace

difference_counter::difference_counter(const memory_image& left, const memory_image& right)
    : all{std::min(left.base(), right.base()), std::max(left.last_address(), right.last_address())},
      block_size(std::uint64_t{1} << block_bits_for(all)) {
    counted.words_by_bit.resize(std::max(left.width(), right.width()));
}

void difference_counter::take(const difference& found) {
    // All that may fail comes first.
    const std::vector<std::uint32_t> bits = differing_bits(found);
    counted.blocks.reserve(difference_figures::most_blocks);
    const std::uint64_t length = found.addresses.last - found.addresses.first + 1;
    counted.words += length;
    ++counted.ranges;
    counted.left_only += found.right ? 0 : length;
    counted.right_only += found.left ? 0 : length;
    counted.bits += length * bits.size();
    for (const std::uint32_t bit : bits) {
        counted.words_by_bit[bit] += length;
    }
    add_to_blocks(found.addresses, bits.size());
}

std::vector<std::uint32_t> difference_counter::differing_bits(const difference& found) const {
    if (!found.left || !found.right) {
        return {};
    }
    std::vector<std::uint32_t> bits;
    const auto left = found.left->to_unsigned();
    const auto right = found.right->to_unsigned();
    if (left && right) {
        for (std::uint64_t rest = *left ^ *right; rest != 0; rest &= rest - 1) {
            bits.push_back(static_cast<std::uint32_t>(std::countr_zero(rest)));
        }
        return bits;
    }
    for (std::uint32_t bit = 0; bit < counted.words_by_bit.size(); ++bit) {
        if (bit_or_zero(*found.left, bit) != bit_or_zero(*found.right, bit)) {
            bits.push_back(bit);
        }
    }
    return bits;
}

void difference_counter::add_to_blocks(const address_range& addresses, std::uint64_t bits_a_word) {
    for (std::uint64_t first = addresses.first;;) {
        const address_range block = {std::max(first & ~(block_size - 1), all.first),
                                     std::min(first | (block_size - 1), all.last)};
        if (counted.blocks.empty() || counted.blocks.back().addresses != block) {
            counted.blocks.push_back({block});
        }
        const std::uint64_t words = std::min(block.last, addresses.last) - first + 1;
        counted.blocks.back().words += words;
        counted.blocks.back().bits += words * bits_a_word;
        if (block.last >= addresses.last) {
            return;
        }
        first = block.last + 1;
    }
}

} // namespace kvrimage

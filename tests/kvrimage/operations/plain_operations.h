#pragma once

#include "kvrimage/operations/merge.h"
#include "kvrimage/operations/reshape.h"
#include "tests/kvrimage/operations/plain_memory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The operations on a memory, word by word and bit by bit.

/// The bits of all @p words in sequence; no value for bits of unset words.
inline std::vector<std::optional<char>> plain_bits(const plain_words& words, std::uint32_t width,
                                                   kvrimage::bit_order order) {
    std::vector<std::optional<char>> bits;
    for (const auto& value : words) {
        for (std::uint32_t index = 0; index < width; ++index) {
            const std::uint32_t digit = order == kvrimage::bit_order::low_first ? width - 1 - index : index;
            bits.push_back(value ? std::optional((*value)[digit]) : std::nullopt);
        }
    }
    return bits;
}

struct plain_reshape {
    plain_words words;
    bool lacks_bits = false; ///< some words contain bits that no old word has
};

inline plain_reshape plainly_reshaped(const plain_words& old, std::uint32_t old_width, std::uint32_t width,
                                      kvrimage::bit_order order, const std::string& pad) {
    std::vector<std::optional<char>> bits = plain_bits(old, old_width, order);
    bits.resize((bits.size() + width - 1) / width * width);
    plain_reshape made;
    for (std::size_t begin = 0; begin < bits.size(); begin += width) {
        std::string value = pad;
        std::uint32_t set = 0;
        for (std::uint32_t index = 0; index < width; ++index) {
            if (const auto& bit = bits[begin + index]) {
                value[order == kvrimage::bit_order::low_first ? width - 1 - index : index] = *bit;
                ++set;
            }
        }
        made.words.push_back(set != 0 ? std::optional(value) : std::nullopt);
        made.lacks_bits = made.lacks_bits || (set != 0 && set != width);
    }
    return made;
}

/// The lane @p lane of @p words, digit by digit.
inline plain_words plain_lane(plain_words words, std::uint32_t lane, std::uint32_t bits) {
    for (auto& value : words) {
        value = value ? std::optional(value->substr(value->size() - (lane + 1) * bits, bits)) : std::nullopt;
    }
    return words;
}

/// The bank @p bank of the @p count banks of @p words.
inline plain_words plain_bank(const plain_words& words, std::uint64_t bank, std::uint64_t count) {
    plain_words taken;
    for (std::uint64_t index = bank; index < words.size(); index += count) {
        taken.push_back(words[index]);
    }
    return taken;
}

struct plain_merge {
    std::uint64_t base = 0;
    plain_words words;
    std::vector<std::uint64_t> taken; ///< words from each memory
    bool overlaps = false;
    bool differs = false;
};

inline plain_merge plainly_merged(const std::vector<kvrimage::memory_image>& parts,
                                  kvrimage::overlap_rule rule) {
    plain_merge made;
    made.base = std::ranges::min(parts, {}, &kvrimage::memory_image::base).base();
    const std::uint64_t last =
        std::ranges::max(parts, {}, &kvrimage::memory_image::last_address).last_address();
    made.taken.resize(parts.size());
    for (std::uint64_t address = made.base; address <= last; ++address) {
        std::optional<kvrimage::word> kept;
        std::size_t kept_of = 0;
        for (std::size_t index = 0; index < parts.size(); ++index) {
            const bool is_there = address >= parts[index].base() && address <= parts[index].last_address();
            const auto value = is_there ? parts[index][address] : std::nullopt;
            if (value && kept) {
                made.overlaps = true;
                made.differs = made.differs || *value != *kept;
            }
            if (value && (!kept || rule == kvrimage::overlap_rule::last)) {
                kept = value;
                kept_of = index;
            }
        }
        made.words.push_back(kept ? kept->to_text(kvrimage::radix::bin) : std::nullopt);
        made.taken[kept_of] += kept ? 1U : 0U;
    }
    return made;
}

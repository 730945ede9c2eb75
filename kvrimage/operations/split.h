#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kvrimage {

// A memory as several ones, and the reverse: joining the parts in their order gives the same memory again.
// All parts have the base of the whole. What a fill has set costs its pattern, in split_banks() and
// join_banks() that of all parts together; words that are set one by one cost a step each.

/// One memory for each @p bits bits of the words: lane 0 has the lowest ones. Each has the depth of @p image.
/// @throws std::invalid_argument when the width is no multiple of @p bits
[[nodiscard]] KVRIMAGE_API std::vector<memory_image> split_lanes(const memory_image& image,
                                                                 std::uint32_t bits);

/// @p count memories, which take turns: bank i has the words number i, i + count, i + 2 * count ... of @p
/// image.
/// @throws std::invalid_argument when the depth is no multiple of @p count
[[nodiscard]] KVRIMAGE_API std::vector<memory_image> split_banks(const memory_image& image,
                                                                 std::uint64_t count);

/// @p count memories of neighbouring words: block 0 has the first ones.
/// @throws std::invalid_argument when the depth is no multiple of @p count
[[nodiscard]] KVRIMAGE_API std::vector<memory_image> split_blocks(const memory_image& image,
                                                                  std::uint64_t count);

/// The memory whose words are those of @p lanes side by side, lane 0 as the lowest bits.
/// @throws std::invalid_argument when @p lanes are none, differ in width, depth or base, or are too wide
/// together
/// @throws std::domain_error when a word is set in some lanes only; what() names the first address, and says
/// how many words they are
[[nodiscard]] KVRIMAGE_API memory_image join_lanes(std::span<const memory_image> lanes);

/// The memory that takes its words from each of @p banks in turn.
/// @throws std::invalid_argument when @p banks are none, differ in width, depth or base, or are too deep
/// together
[[nodiscard]] KVRIMAGE_API memory_image join_banks(std::span<const memory_image> banks);

/// The memory that has the words of all @p blocks, one block after the other.
/// @throws std::invalid_argument when @p blocks are none, differ in width, depth or base, or are too deep
/// together
[[nodiscard]] KVRIMAGE_API memory_image join_blocks(std::span<const memory_image> blocks);

} // namespace kvrimage

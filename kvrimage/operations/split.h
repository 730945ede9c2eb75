#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kvrimage {

// Splits a memory into several memories and joins them again. Joining the parts in order restores the memory.
// All parts have the base of the whole. A fill takes time proportional to its pattern; in split_banks() and
// join_banks() to the pattern of all parts together. Words that were set one by one take a step each.

/// Splits each word into parts of @p bits bits, one memory for each part. Lane 0 has the lowest bits. Each
/// lane has the depth of @p image.
/// @throws std::invalid_argument if the width is no multiple of @p bits
[[nodiscard]] KVRIMAGE_API std::vector<memory_image> split_lanes(const memory_image& image,
                                                                 std::uint32_t bits);

/// Distributes the words to @p count memories in turn: bank i has the words i, i + count, i + 2 * count ...
/// of @p image.
/// @throws std::invalid_argument if the depth is no multiple of @p count
[[nodiscard]] KVRIMAGE_API std::vector<memory_image> split_banks(const memory_image& image,
                                                                 std::uint64_t count);

/// Splits the words into @p count memories of adjacent words. Block 0 has the first words.
/// @throws std::invalid_argument if the depth is no multiple of @p count
[[nodiscard]] KVRIMAGE_API std::vector<memory_image> split_blocks(const memory_image& image,
                                                                  std::uint64_t count);

/// Joins the words of @p lanes side by side. Lane 0 has the lowest bits.
/// @throws std::invalid_argument if @p lanes is empty, if width, depth or base differ, or if the joined words
/// are too wide
/// @throws std::domain_error if a word is set in some lanes only; what() names the first address and the
/// number of such words
[[nodiscard]] KVRIMAGE_API memory_image join_lanes(std::span<const memory_image> lanes);

/// Joins memories by taking words from each of @p banks in turn.
/// @throws std::invalid_argument if @p banks is empty, if width, depth or base differ, or if the result is
/// too deep
[[nodiscard]] KVRIMAGE_API memory_image join_banks(std::span<const memory_image> banks);

/// Concatenates the words of @p blocks.
/// @throws std::invalid_argument if @p blocks is empty, if width, depth or base differ, or if the result is
/// too deep
[[nodiscard]] KVRIMAGE_API memory_image join_blocks(std::span<const memory_image> blocks);

} // namespace kvrimage

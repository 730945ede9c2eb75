#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <span>

namespace kvrimage {

// Each makes a new memory of @p image, and costs what it holds, not its depth.

/// The same memory with the words of @p ranges only; all others are not set. What of a range is beyond the
/// memory does not matter.
/// @throws std::invalid_argument when a range ends before it begins
[[nodiscard]] KVRIMAGE_API memory_image only(const memory_image& image,
                                             std::span<const address_range> ranges);

/// The same memory without the words of @p ranges, likewise.
/// @throws std::invalid_argument when a range ends before it begins
[[nodiscard]] KVRIMAGE_API memory_image except(const memory_image& image,
                                               std::span<const address_range> ranges);

/// The memory in which the word at address @p from has moved to address @p to, and all others with it. It has
/// the same base; its depth is that of @p image, or as much larger as the highest word that is set needs.
/// Where the lowest word that is set comes to an address below the base, that becomes the base, and the last
/// address stays.
/// @throws std::out_of_range when a word that is set would come to an address below 0 or above 2^64 - 1, or
/// the memory would have more than deepest_memory words
[[nodiscard]] KVRIMAGE_API memory_image moved(const memory_image& image, std::uint64_t from,
                                              std::uint64_t to);

/// The same memory, @p depth words deep; new words are not set.
/// @throws std::invalid_argument when memory_image::resize() does not take @p depth
/// @throws std::out_of_range when a word that is set has no room in it; what() names the highest one
[[nodiscard]] KVRIMAGE_API memory_image with_depth(const memory_image& image, std::uint64_t depth);

} // namespace kvrimage

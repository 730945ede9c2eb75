#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <span>

namespace kvrimage {

// Each function returns a new memory and takes time proportional to the stored content, not to the depth.

/// Returns @p image with only the words of @p ranges; all others are not set. Addresses outside the memory
/// are ignored.
/// @throws std::invalid_argument if a range ends before it begins
[[nodiscard]] KVRIMAGE_API memory_image only(const memory_image& image,
                                             std::span<const address_range> ranges);

/// Returns @p image without the words of @p ranges. Addresses outside the memory are ignored.
/// @throws std::invalid_argument if a range ends before it begins
[[nodiscard]] KVRIMAGE_API memory_image except(const memory_image& image,
                                               std::span<const address_range> ranges);

/// Returns @p image with all words moved so that the word at address @p from is at @p to. The base stays the
/// same, and the depth grows as far as the highest word requires. If the lowest word moves below the base,
/// its address becomes the new base and the last address stays the same.
/// @throws std::out_of_range if a word would move below address 0 or above 2^64 - 1, or if the result has
/// more than deepest_memory words
[[nodiscard]] KVRIMAGE_API memory_image moved(const memory_image& image, std::uint64_t from,
                                              std::uint64_t to);

/// Returns @p image with @p depth words. New words are not set.
/// @throws std::invalid_argument if memory_image::resize() rejects @p depth
/// @throws std::out_of_range if a word that is set does not fit; what() names the highest one
[[nodiscard]] KVRIMAGE_API memory_image with_depth(const memory_image& image, std::uint64_t depth);

} // namespace kvrimage

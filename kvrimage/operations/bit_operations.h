#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

namespace kvrimage {

// Each function returns a new memory with the same addresses, width and depth. Words that are not set stay
// unset. Time and memory are proportional to the stored content; a fill counts as its pattern only.

/// Returns @p image with the bits cleared that are 0 in @p bits, including don't-care bits.
/// @throws std::invalid_argument if @p bits has don't-care bits, or another width than the memory
[[nodiscard]] KVRIMAGE_API memory_image masked(const memory_image& image, const word& bits);

/// Returns @p image with the bit order of each word reversed.
[[nodiscard]] KVRIMAGE_API memory_image with_reversed_bits(const memory_image& image);

/// Returns @p image with the byte order of each word reversed.
/// @throws std::invalid_argument if the width is no multiple of 8
[[nodiscard]] KVRIMAGE_API memory_image with_swapped_bytes(const memory_image& image);

/// Returns @p image with each bit inverted. Don't-care bits stay don't-care.
[[nodiscard]] KVRIMAGE_API memory_image inverted(const memory_image& image);

} // namespace kvrimage

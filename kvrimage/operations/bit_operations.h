#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

namespace kvrimage {

// Each makes a new memory: the same addresses, width and depth; words that are not set stay so. Time and
// memory follow what the memory holds; what one fill has set costs its pattern.

/// Clears the bits that are 0 in @p bits, don't-care ones too.
/// @throws std::invalid_argument when @p bits has another width than the memory, or don't-care bits
[[nodiscard]] KVRIMAGE_API memory_image masked(const memory_image& image, const word& bits);

/// Bit 0 of each word becomes its highest one, and so on.
[[nodiscard]] KVRIMAGE_API memory_image with_reversed_bits(const memory_image& image);

/// The first byte of each word becomes its last one, and so on.
/// @throws std::invalid_argument when the width is no multiple of 8
[[nodiscard]] KVRIMAGE_API memory_image with_swapped_bytes(const memory_image& image);

/// Each 0 becomes 1, and each 1 becomes 0. Don't-care bits stay so.
[[nodiscard]] KVRIMAGE_API memory_image inverted(const memory_image& image);

} // namespace kvrimage

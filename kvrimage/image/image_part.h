#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/memory_image.h"

namespace kvrimage {

/// The memory of the words of @p range alone, at the addresses that they have. What a fill has set costs its
/// pattern, and words that a file had as bytes are not copied.
/// @throws std::out_of_range when @p range is not in the memory
/// @throws std::invalid_argument when it ends before it begins
[[nodiscard]] KVRIMAGE_API memory_image cut_out(const memory_image& image, const address_range& range);

/// Sets the words of @p image at the addresses at which @p part, another object, has words to these; all
/// others stay as they are.
/// @throws std::out_of_range when an address of @p part, set or not, is not in @p image
/// @throws std::invalid_argument when the words differ in width
KVRIMAGE_API void overlay(memory_image& image, const memory_image& part);

} // namespace kvrimage

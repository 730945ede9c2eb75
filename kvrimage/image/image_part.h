#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/memory_image.h"

namespace kvrimage {

/// Returns the words of @p range as a memory of their own, at the same addresses. A fill takes memory
/// proportional to its pattern, and words stored as bytes are shared, not copied.
/// @throws std::out_of_range if @p range exceeds the memory
/// @throws std::invalid_argument if @p range ends before it begins
[[nodiscard]] KVRIMAGE_API memory_image cut_out(const memory_image& image, const address_range& range);

/// Copies the words that are set in @p part to the same addresses of @p image. All other words keep their
/// value. @p part must be another object.
/// @throws std::out_of_range if an address of @p part, set or not, is outside @p image
/// @throws std::invalid_argument if the widths differ
KVRIMAGE_API void overlay(memory_image& image, const memory_image& part);

} // namespace kvrimage

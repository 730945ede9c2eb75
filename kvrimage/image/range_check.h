#pragma once

#include "kvrimage/image/address_range.h"

namespace kvrimage {

class memory_image;

/// @throws std::invalid_argument when @p range ends before it begins
void require_ascending(const address_range& range);

/// @throws std::invalid_argument when @p range ends before it begins
/// @throws std::out_of_range when an address of it is not in @p image
void require_within(const memory_image& image, const address_range& range);

} // namespace kvrimage

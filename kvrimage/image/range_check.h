#pragma once

#include "kvrimage/image/address_range.h"

namespace kvrimage {

class memory_image;

/// @throws std::invalid_argument if @p range ends before it begins
void require_ascending(const address_range& range);

/// @throws std::invalid_argument if @p range ends before it begins
/// @throws std::out_of_range if an address of @p range is outside @p image
void require_within(const memory_image& image, const address_range& range);

} // namespace kvrimage

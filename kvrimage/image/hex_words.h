#pragma once

#include "kvrimage/image/memory_image.h"

#include <string>

namespace kvrimage {

/// Appends the words of @p range of @p image to @p text: upper-case hexadecimal, all digits of each ("X" for
/// four don't-care bits), nothing between them. It costs a copy where the words were set one by one. False,
/// with @p text as it was, when one of them is not set, or has a don't-care bit beside a plain one.
/// @throws std::out_of_range beyond the memory
/// @throws std::invalid_argument when @p range ends before it begins
bool append_hex_words(const memory_image& image, const address_range& range, std::string& text);

} // namespace kvrimage

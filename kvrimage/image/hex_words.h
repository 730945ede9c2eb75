#pragma once

#include "kvrimage/image/memory_image.h"

#include <string>

namespace kvrimage {

/// Appends the words of @p range of @p image to @p text as upper-case hexadecimal digits, without separators.
/// Each word has all its digits; "X" stands for four don't-care bits. Words that were set one by one are
/// copied directly. Returns false and leaves @p text unchanged if a word is not set or mixes a don't-care bit
/// with other bits in a digit.
/// @throws std::out_of_range if @p range exceeds the memory
/// @throws std::invalid_argument if @p range ends before it begins
bool append_hex_words(const memory_image& image, const address_range& range, std::string& text);

} // namespace kvrimage

#pragma once

#include "kvr/memory/memory_types.h"

#include <string>
#include <string_view>

namespace kvr {

/// Returns the result of kvr_radix_conversion() for any text and any radix. This is the exact path, which
/// writes all binary digits.
std::string convert_word_through_binary_digits(const std::string& text, KVR_MEMORY_RADIXES from,
                                               KVR_MEMORY_RADIXES to, unsigned int width);

/// Fast path without intermediate binary digits. It supports two radixes out of hexadecimal, octal and
/// decimal, and hexadecimal or octal to binary. From hexadecimal or octal to itself or to binary it accepts
/// any text. Otherwise the text must be a nonempty number without don't-care digits and, in decimal, with
/// digits only after the sign. For anything else it returns false and leaves the output unchanged. @p output
/// may be the text that @p text refers to.
bool convert_word_directly(std::string& output, std::string_view text, KVR_MEMORY_RADIXES from,
                           KVR_MEMORY_RADIXES to, unsigned int width);

} // namespace kvr

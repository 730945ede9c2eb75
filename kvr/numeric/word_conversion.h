#pragma once

#include "kvr/memory/memory_types.h"

#include <string>
#include <string_view>

namespace kvr {

/// The result text of kvr_radix_conversion(), for every text and every radix: the exact path, which writes
/// the binary digits out.
std::string convert_word_through_binary_digits(const std::string& text, KVR_MEMORY_RADIXES from,
                                               KVR_MEMORY_RADIXES to, unsigned int width);

/// The same result without the intermediate binary digits: the fast path, for two radixes out of hexadecimal,
/// octal and decimal, and from hexadecimal or octal to binary. From hexadecimal or octal to itself or to
/// binary it takes any text. Otherwise it assumes a text that is not empty and is a number: no
/// don't-care digit and, in decimal, only digits after the sign. False, with the output as it was,
/// for all the rest. @p output may be what @p text refers to.
bool convert_word_directly(std::string& output, std::string_view text, KVR_MEMORY_RADIXES from,
                           KVR_MEMORY_RADIXES to, unsigned int width);

} // namespace kvr

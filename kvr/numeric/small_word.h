#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/numeric/exact_value.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kvr {

/// Fast path of kvr_radix_conversion() for words that fit a machine word. It sets @p output, which may be the
/// text that @p text refers to, and allocates only its characters.
///
/// Both radixes must be hexadecimal, octal or decimal. The text must have digits without don't-care digits
/// only (after the sign) and at most 64 bits before and after the width is applied, including the sign bit.
/// For anything else it returns false and leaves the output unchanged.
bool convert_small_word(std::string& output, std::string_view text, KVR_MEMORY_RADIXES from,
                        KVR_MEMORY_RADIXES to, unsigned int width);

/// Fast path of append_exact_word() for words that fit a machine word.
///
/// The width must be at most 64 bits. The text must have digits without don't-care digits only (after the
/// sign), at most as many as 64 bits or 19 decimal digits require, and its value must fit the width. For
/// anything else it returns false and leaves the result unchanged.
bool append_small_exact_word(std::string& result, std::string_view text, const exact_conversion& conversion);

/// Fast path of append_exact_word() from hexadecimal to hexadecimal at any width. There must be no don't-care
/// digits and no more digits than the width has, and the value must fit. For anything else it returns false
/// and leaves the result unchanged.
bool append_same_hex_digits(std::string& result, std::string_view text, std::size_t width);

} // namespace kvr

#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/numeric/exact_value.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kvr {

/// The fast path of kvr_radix_conversion() for words of a machine word: sets @p output, which may be what
/// @p text refers to, and allocates nothing but its characters.
///
/// It assumes two radixes out of hexadecimal, octal and decimal, a text of known digits only (after the
/// sign) and no more than 64 bits before and after the width is applied, the sign bit included. False, with
/// the output as it was, for all the rest.
bool convert_small_word(std::string& output, std::string_view text, KVR_MEMORY_RADIXES from,
                        KVR_MEMORY_RADIXES to, unsigned int width);

/// The fast path of append_exact_word() for words of a machine word.
///
/// It assumes a width of no more than 64 bits, a text of known digits only (after the sign), no longer than
/// 64 bits or 19 decimal digits take, and a value that fits the width. False, with the result as it was, for
/// all the rest.
bool append_small_exact_word(std::string& result, std::string_view text, const exact_conversion& conversion);

/// The fast path of append_exact_word() from hexadecimal to hexadecimal, at any width. It assumes known
/// digits only, no more of them than the width has, and a value that fits it. False, with the result as it
/// was, for all the rest.
bool append_same_hex_digits(std::string& result, std::string_view text, std::size_t width);

} // namespace kvr

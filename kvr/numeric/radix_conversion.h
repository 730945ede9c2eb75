#pragma once

/// @file
/// Words from one radix to another.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <string>

/// Converts the text of one memory word from one radix to another, at any length.
///
/// The text becomes a binary digit string (most significant bit first), is cut or padded to the width,
/// and becomes text in the target radix. Signed decimal is ones' complement ("-5" gives "1010"), and
/// decimal results come out least significant digit first ("1100" gives "21"); callers rely on both.
/// Decimal text is read most significant digit first, so a decimal result does not read back to its input.
///
/// @param output overwritten in every case, also when the result is false; unchanged when an exception
///               escapes. It may be @p input itself.
/// @param width  word width in bits; higher bits are cut silently, missing ones are "0" (no sign
///               extension). 0 leaves the length as it comes.
/// @return false if either radix is RADIX_NONE, else true: digits are never checked here. A character that
///         is no digit of its radix counts as 0 (hexadecimal, octal), by its code (decimal), or
///         passes through (binary). "X" and "x" are don't-care digits in hexadecimal and octal text.
/// Any other radix reads as no digits at all, and writes "".
/// @throws std::out_of_range for an empty signed-decimal text, and for an empty digit string on its way
///         to signed decimal (an empty text or an unknown radix, at width 0).
KVR_API bool kvr_radix_conversion(const std::string& input, std::string* output, KVR_MEMORY_RADIXES from,
                                  KVR_MEMORY_RADIXES to, unsigned int width);

/// The binary digit string of @p text, a number in @p radix (a KVR_MEMORY_RADIXES value), most significant
/// bit first. Hexadecimal and octal give 4 and 3 digits for each one, decimal the shortest form (signed:
/// with a leading sign bit, all bits inverted after "-"). A decimal text without digits is 0. "" for any
/// other radix.
/// @throws std::out_of_range for an empty signed-decimal text.
KVR_API std::string convert_to_binary_string(const std::string& text, int radix);

/// The text of the binary digit string @p bits in @p radix (a KVR_MEMORY_RADIXES value): one upper-case
/// hexadecimal or octal digit for each group of bits counted from the right, leading zeros kept, "X" for a
/// group with a don't-care bit. Decimal comes out least significant digit first, any character but "1"
/// counting as a zero bit; signed, a leading "1" gives "-" and the inversion of the other bits. "" for any
/// other radix.
/// @throws std::out_of_range for an empty digit string on its way to signed decimal.
KVR_API std::string convert_from_binary_string(const std::string& bits, int radix);

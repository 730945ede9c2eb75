#pragma once

/// @file
/// Conversion of words from one radix to another.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <string>

/// Converts the text of one memory word from one radix to another, at any length.
///
/// The text becomes a binary digit string (most significant bit first), is cut or padded to the width, and
/// becomes text in the target radix. Signed decimal is ones' complement ("-5" gives "1010"). Decimal results
/// have the least significant digit first ("1100" gives "21"). Callers rely on both. Decimal input has the
/// most significant digit first, so a decimal result cannot be converted back.
///
/// @param output overwritten in every case, even if the result is false; unchanged if an exception is thrown.
/// It may be @p input itself
/// @param width word width in bits. Higher bits are cut silently, missing ones become "0" (no sign
/// extension). 0 keeps the length of the text
/// @return false if a radix is RADIX_NONE, else true: digits are not checked. A character that is no digit of
/// its radix counts as 0 (hexadecimal, octal), counts by its code (decimal), or is copied (binary). "X" and
/// "x" are don't-care digits in hexadecimal and octal text. Any other radix is read as no digits and written
/// as "".
/// @throws std::out_of_range for an empty signed-decimal text, and for an empty digit string to be converted
/// to signed decimal (an empty text or an unknown radix at width 0)
KVR_API bool kvr_radix_conversion(const std::string& input, std::string* output, KVR_MEMORY_RADIXES from,
                                  KVR_MEMORY_RADIXES to, unsigned int width);

/// Returns the binary digit string of @p text, a number in @p radix (a KVR_MEMORY_RADIXES value), most
/// significant bit first. Each hexadecimal digit gives 4 bits and each octal digit 3. Decimal gives the
/// shortest form; signed decimal has a leading sign bit, and after "-" all bits are inverted. A decimal text
/// without digits is 0. Any other radix gives "".
/// @throws std::out_of_range for an empty signed-decimal text
KVR_API std::string convert_to_binary_string(const std::string& text, int radix);

/// Returns the text of the binary digit string @p bits in @p radix (a KVR_MEMORY_RADIXES value). Hexadecimal
/// and octal have one upper-case digit for each group of bits, counted from the right, with leading zeros; a
/// group with a don't-care bit gives "X". Decimal has the least significant digit first; any character but
/// "1" is a zero bit. In signed decimal a leading "1" gives "-" and inverts the other bits. Any other radix
/// gives "".
/// @throws std::out_of_range for an empty digit string and signed decimal
KVR_API std::string convert_from_binary_string(const std::string& bits, int radix);

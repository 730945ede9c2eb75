#pragma once

/// @file
/// Texts of machine integers.

#include "kvr/export.h"

#include <string>

/// Writes @p value as text in @p radix (2 to 36, digits "0" to "9" and "a" to "z") with a NUL after it
/// into @p buffer, which the caller owns: 33 bytes hold any result. Radix 10 writes "-" before a negative
/// value; every other radix writes the 32-bit pattern (-1 in radix 16 gives "ffffffff"). A radix above 36
/// runs past "z" in the character code; 0 and 1, in which nothing can be written, give "0".
KVR_API void kvr_itoa(int value, char* buffer, int radix);

/// kvr_itoa() without a sign in any radix.
KVR_API void kvr_ultoa(unsigned int value, char* buffer, int radix);

/// The digits of kvr_ultoa() as a string; all 32 of them in radix 2.
KVR_API std::string kvr_long_to_string(unsigned int value, int radix);

/// Decimal text, with "-" before a negative value.
KVR_API std::string kvr_int_to_string(int value);

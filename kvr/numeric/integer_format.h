#pragma once

/// @file
/// Text of machine integers.

#include "kvr/export.h"

#include <string>

/// Writes @p value in @p radix (2 to 36, digits "0" to "9" and "a" to "z") with a terminating NUL to
/// @p buffer, which the caller owns. 33 bytes hold any result. Radix 10 writes "-" before a negative value;
/// any other radix writes the 32-bit pattern (-1 in radix 16 gives "ffffffff"). A radix above 36 uses the
/// characters after "z"; 0 and 1, in which no number can be written, give "0".
KVR_API void kvr_itoa(int value, char* buffer, int radix);

/// Like kvr_itoa(), but unsigned in every radix.
KVR_API void kvr_ultoa(unsigned int value, char* buffer, int radix);

/// Returns the digits of kvr_ultoa() as a string; in radix 2 up to 32 digits.
KVR_API std::string kvr_long_to_string(unsigned int value, int radix);

/// Returns decimal text, with "-" before a negative value.
KVR_API std::string kvr_int_to_string(int value);

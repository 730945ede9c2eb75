#pragma once

/// @file
/// Fixed-point texts.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <string>

/// kvr_radix_conversion() at width 0 that also knows RADIX_FIXED_POINT: a decimal fraction such as "0.625"
/// or "-0.5", held as bits that @p format describes. Without RADIX_FIXED_POINT on either side @p format
/// does not matter.
///
/// The bits are sign and magnitude: the integer bits all repeat the sign (1 is negative), and the fraction
/// bits are the magnitude, first bit one half, summed as doubles. Only -1 has no fraction bit set.
///
/// To bits: the first character "-" makes the value negative, the rest reads like std::atof() in the C
/// locale, 1 is taken off once if it is reached, and the fraction is cut, never rounded; from 2 on every
/// fraction bit is set. From bits: too long ones lose their front, too short ones repeat their first
/// character; the text has a "." and after it as few digits as it takes, one at least.
///
/// @param output may be @p input itself. Not touched if a radix is RADIX_NONE, nor if the result would be
///               in RADIX_FIXED_POINT and the format is broken; otherwise overwritten.
/// @param format "I.F", the numbers of integer and fraction bits, read like std::atoi() does; broken when
///               either is below 1.
/// @return false where output is not touched, and for fixed-point text of integer bits that differ (the
///         sign is then that of the first bit that differs from its predecessor). From RADIX_FIXED_POINT a
///         broken format gives true and the conversion of no bits at all; callers rely on it.
/// @throws std::out_of_range for an empty fixed-point or signed-decimal text, and for an empty digit string
///         on its way to fixed point or signed decimal.
/// @throws std::bad_alloc, std::length_error when there is no memory for the bits: from RADIX_FIXED_POINT
///         they take I + F bytes, whatever the length of the text. A caller that takes formats from others
///         limits them.
KVR_API bool kvr_radix_conversion_fixed_point(const std::string& input, std::string* output,
                                              KVR_MEMORY_RADIXES from, KVR_MEMORY_RADIXES to,
                                              const std::string& format);

/// Writes the binary digit string of @p input into @p output, most significant bit first: what follows
/// "0b", unchecked; 4 digits for each hexadecimal digit after "0x" ("X" gives "XXXX"); else the shortest
/// form of an unsigned decimal. The prefixes are lower case, and something must follow them.
/// @return always true: digits are never checked.
KVR_API bool kvr_convert_numeric_string_to_binary_format(const std::string& input, std::string& output);

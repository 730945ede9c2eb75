#pragma once

/// @file
/// Fixed-point text.

#include "kvr/export.h"
#include "kvr/memory/memory_types.h"

#include <string>

/// Converts like kvr_radix_conversion() at width 0, but also supports RADIX_FIXED_POINT: a decimal fraction
/// such as "0.625" or "-0.5", encoded in bits according to @p format. Unless one of the radixes is
/// RADIX_FIXED_POINT, @p format is ignored.
///
/// The bits are sign and magnitude. All integer bits repeat the sign (1 is negative). The fraction bits are
/// the magnitude; the first has the weight one half. They are summed as doubles. Only -1 has no fraction bit
/// set.
///
/// To bits: if the first character is "-", the value is negative. The rest is parsed like std::atof() in the
/// C locale. If the value is 1 or more, 1 is subtracted once. The fraction is truncated, never rounded; from
/// 2 on all fraction bits are set. From bits: too many bits are cut at the front, too few are extended by
/// repeating the first character. The text has a "." and after it as few digits as necessary, at least one.
///
/// @param output may be @p input itself. It is not changed if a radix is RADIX_NONE, nor if the target is
/// RADIX_FIXED_POINT and the format is invalid; otherwise it is overwritten
/// @param format "I.F", the numbers of integer and fraction bits, parsed like std::atoi(); invalid if one of
/// them is below 1
/// @return false if output is not changed, and for fixed-point text made from integer bits that differ (the
/// sign is then that of the first bit that differs from its predecessor). From RADIX_FIXED_POINT an invalid
/// format gives true and the conversion of no bits; callers rely on it
/// @throws std::out_of_range for an empty fixed-point or signed-decimal text, and for an empty digit string
/// to be converted to fixed point or signed decimal
/// @throws std::bad_alloc, std::length_error if there is no memory for the bits: from RADIX_FIXED_POINT they
/// take I + F bytes, regardless of the length of the text. Callers should limit formats from untrusted
/// sources
KVR_API bool kvr_radix_conversion_fixed_point(const std::string& input, std::string* output,
                                              KVR_MEMORY_RADIXES from, KVR_MEMORY_RADIXES to,
                                              const std::string& format);

/// Writes the binary digit string of @p input to @p output, most significant bit first. After "0b" the digits
/// are copied; after "0x" each hexadecimal digit gives 4 digits ("X" gives "XXXX"); any other text is
/// converted as unsigned decimal to its shortest form. The prefixes must be in lower case and must be
/// followed by something.
/// @return always true: digits are not checked
KVR_API bool kvr_convert_numeric_string_to_binary_format(const std::string& input, std::string& output);

#pragma once

/// @file
/// Tests whether a text is an integer, a decimal fraction, or a hexadecimal or binary number.

#include "kvr/export.h"

#include <string>

/// True if all characters are decimal digits; the first one may be "-" instead. "" and "-" are integers too;
/// callers rely on it. "+" and blanks are not allowed.
KVR_API bool kvr_is_integer_value(const std::string& text);

/// True for decimal digits with exactly one "." and at least one digit after it (".5", "12.0"). Signs and
/// exponents are not allowed.
KVR_API bool kvr_is_float_value(const std::string& text);

/// True if @p text has exactly @p width / 4 characters (rounded down), all hexadecimal digits of either case.
/// @p width is the word width in bits, interpreted as unsigned.
KVR_API bool kvr_is_hex_value(const std::string& text, int width);

/// True if @p text has exactly @p width characters, all "0" or "1".
KVR_API bool kvr_is_binary_value(const std::string& text, int width);

#pragma once

/// @file
/// The syntax of a text: integer, float, hexadecimal or binary number.

#include "kvr/export.h"

#include <string>

/// True when every character is a decimal digit; the first one may be "-" instead. "" and "-" are
/// integers too; callers rely on it. No "+", no blanks.
KVR_API bool kvr_is_integer_value(const std::string& text);

/// True for decimal digits with exactly one "." and at least one digit after it (".5", "12.0"). No sign,
/// no exponent.
KVR_API bool kvr_is_float_value(const std::string& text);

/// True when @p text has exactly @p width / 4 characters (rounded down) and all of them are hexadecimal
/// digits of either case. @p width: word width in bits, taken as unsigned.
KVR_API bool kvr_is_hex_value(const std::string& text, int width);

/// True when @p text has exactly @p width characters and all of them are "0" or "1".
KVR_API bool kvr_is_binary_value(const std::string& text, int width);

#pragma once

#include <string_view>

/// The number at the front of a text, parsed like std::atoi() and std::atof() in the C locale, regardless of
/// the locale of the process. Leading white space is skipped, "+" or "-" may precede the number, and any text
/// may follow. A text without a number gives 0. A NUL ends the text.
namespace kvr {

/// Parses a decimal integer. A value beyond the range of int gives the nearest int.
int leading_integer(std::string_view text);

/// Parses a decimal or hexadecimal ("0x1.8p3") number, "inf", "infinity" or "nan", in any letter case. Rounds
/// to the nearest double: infinity if too large, 0 if too small.
double leading_float(std::string_view text);

} // namespace kvr

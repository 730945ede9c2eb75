#pragma once

#include <string_view>

/// The number at the front of a text, as std::atoi() and std::atof() read it in the C locale, whatever the
/// process locale is. White space before it is skipped, a "+" or "-" may lead, anything may follow, and a
/// text without a number gives 0. A NUL ends the text.
namespace kvr {

/// A decimal integer. Beyond the range of int: the nearest int.
int leading_integer(std::string_view text);

/// A decimal or hexadecimal ("0x1.8p3") number, "inf", "infinity" or "nan", in any letter case. Rounded to
/// the nearest double: an infinity if too large, 0 if too small.
double leading_float(std::string_view text);

} // namespace kvr

#pragma once

#include <string>
#include <string_view>

namespace kvr {

// Binary digit strings, most significant bit first: the intermediate form of every radix conversion. Digits
// are not checked here.

/// Returns the @p width lowest bits of the absolute value of @p value; a width of 0 counts as 1. Returns ""
/// for the value -1 with any width, and for a negative width; callers rely on it.
std::string int_to_binary_string(int value, int width);

/// Replaces each "1" by "0" and every other character by "1".
void invert_binary_string(std::string& bits);

/// Returns the shortest binary digit string of a decimal text; "0" for zero and for no digits. Signed: a "0"
/// precedes the digits as a sign bit, and after a leading "-" all of them are inverted (ones' complement).
///
/// A character that is no digit counts by its code: see the exact path in the source.
/// @throws std::out_of_range for an empty signed text
std::string decimal_to_binary_string(std::string_view text, bool is_signed);

/// Returns the decimal text of a binary digit string, least significant digit first ("1100" gives "21");
/// callers rely on it. Any character but "1" is a zero bit. Signed: a leading "1" gives "-" and inverts the
/// other bits (ones' complement, so "11" gives "-0").
/// @throws std::out_of_range for an empty signed digit string
std::string binary_to_decimal_string(std::string_view bits, bool is_signed);

/// Returns one upper-case digit for each group of bits, counted from the right; the leftmost group is padded
/// with zeros. A group with "X" or "x" gives "X". @p bits_per_digit is 4 for hexadecimal; any other value
/// means octal.
std::string binary_to_grouped_radix_string(std::string_view bits, int bits_per_digit);

/// Returns the bits of each digit: 4 for hexadecimal or, if @p bits_per_digit is not 4, 3 for octal. "X" and
/// "x" give as many "X"; a character that is no digit of the radix counts as 0.
std::string grouped_radix_to_binary_string(std::string_view text, int bits_per_digit);

/// Writes the result of grouped_radix_to_binary_string(). @p bits_per_digit is 4 or 3.
void write_bits_of_digits(char* place, std::string_view text, unsigned bits_per_digit);

} // namespace kvr

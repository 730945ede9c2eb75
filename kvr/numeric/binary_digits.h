#pragma once

#include <string>
#include <string_view>

namespace kvr {

// Binary digit strings, most significant bit first: the intermediate form of every radix conversion. Nothing
// checks digits here.

/// The @p width lowest bits of the absolute value of @p value; a width of 0 counts as 1. "" for the value
/// -1, whatever the width, and for a negative width; callers rely on it.
std::string int_to_binary_string(int value, int width);

/// Every "1" becomes "0", every other character becomes "1".
void invert_binary_string(std::string& bits);

/// The shortest binary digit string of a decimal text, "0" for zero and for no digits at all. Signed: one
/// leading "0" as a sign bit, and after a leading "-" the inversion of all that (ones' complement).
///
/// A character that is no digit counts by its code: see the exact path in the source.
/// @throws std::out_of_range for an empty signed text.
std::string decimal_to_binary_string(std::string_view text, bool is_signed);

/// The decimal text of a binary digit string, least significant digit first ("1100" gives "21"); callers
/// rely on it. Any character but "1" is a zero bit. Signed: after a leading "1", "-" and the inversion of
/// the other bits (ones' complement, so that "11" gives "-0").
/// @throws std::out_of_range for an empty signed digit string.
std::string binary_to_decimal_string(std::string_view bits, bool is_signed);

/// One upper-case digit for each group of bits counted from the right, the leftmost group padded with
/// zeros; "X" for a group that has an "X" or "x" in it. @p bits_per_digit: 4 for hexadecimal, anything else
/// for octal.
std::string binary_to_grouped_radix_string(std::string_view bits, int bits_per_digit);

/// 4 bits for each hexadecimal digit or, with any other @p bits_per_digit than 4, 3 for each octal one.
/// "X" and "x" give that many "X"; a character that is no digit of the radix counts as 0.
std::string grouped_radix_to_binary_string(std::string_view text, int bits_per_digit);

/// Writes what grouped_radix_to_binary_string() returns; @p bits_per_digit is 4 or 3.
void write_bits_of_digits(char* place, std::string_view text, unsigned bits_per_digit);

} // namespace kvr

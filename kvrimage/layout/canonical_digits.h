#pragma once

#include "kvrimage/image/radix.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// Instead of a number of digits: keep the digits of the text.
inline constexpr std::size_t digits_of_the_text = 0;

/// The most digits that are filled up with zeros. Without this limit, a file with few long numbers and many
/// short ones would grow far too much.
inline constexpr std::size_t most_canonical_digits = 512;

/// Returns the digits to which a word of @p width bits is filled up with zeros. It is 1 for decimal words,
/// which have no leading zeros, and digits_of_the_text above most_canonical_digits.
[[nodiscard]] std::size_t canonical_word_digits(radix digits_radix, std::uint32_t width);

/// Returns the number @p text in upper case with leading zeros added or removed to have @p digits digits, if
/// possible; digits_of_the_text keeps its digits. A text with characters other than digits and "-" keeps its
/// length, since its first digit may extend to the left.
[[nodiscard]] std::string canonical_number(std::string_view text, std::size_t digits);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/radix.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// In place of a number of digits: as many as the text has.
inline constexpr std::size_t digits_of_the_text = 0;

/// Beyond them numbers keep their digits: a file of a few long ones and many short ones would become far
/// larger than it is.
inline constexpr std::size_t most_canonical_digits = 512;

/// Digits that a word of @p width bits is filled up to with zeros; 1 for a decimal one, which has none in
/// front of it; digits_of_the_text where they are more than most_canonical_digits.
[[nodiscard]] std::size_t canonical_word_digits(radix digits_radix, std::uint32_t width);

/// The number @p text in upper case, with zeros in front of it until it has @p digits digits, or fewer of
/// them where it has more; with digits_of_the_text those that it has. One with other characters than digits
/// and a "-" keeps its length: what its first digit stands for may go on to the left of it.
[[nodiscard]] std::string canonical_number(std::string_view text, std::size_t digits);

} // namespace kvrimage

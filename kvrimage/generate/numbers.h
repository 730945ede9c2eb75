#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/rounding.h"

#include <cstdint>
#include <span>
#include <variant>

namespace kvrimage {

/// A number to convert to a word.
using generated_number = std::variant<std::int64_t, double>;

/// How numbers are converted to words.
struct number_rules {
    rounding how = rounding::nearest; ///< rounding of fractions to integers
    bool saturate = false;            ///< replaces a number out of range by the largest or the smallest one
    bool is_signed = false;           ///< uses two's complement even if no number is negative
};

/// Returns a memory with the words of @p numbers from address 0 on. Fractions are rounded according to
/// @p rules; integers are exact. If a number is negative after rounding, all words are two's complement and
/// range from -2^(width-1) to 2^(width-1)-1; otherwise they range from 0 to 2^width-1. Takes time and memory
/// proportional to the bits.
/// @throws std::overflow_error for a number out of range, unless @p rules saturate; what() names the number,
/// its address and the limits
/// @throws std::domain_error for a number that is not finite; what() names its address
/// @throws std::invalid_argument if @p numbers is empty, or if memory_image() rejects the width
[[nodiscard]] KVRIMAGE_API memory_image number_words(std::span<const generated_number> numbers,
                                                     std::uint32_t width, const number_rules& rules = {});

} // namespace kvrimage

#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/rounding.h"

#include <cstdint>
#include <span>
#include <variant>

namespace kvrimage {

/// A number that becomes a word.
using generated_number = std::variant<std::int64_t, double>;

/// How numbers become words.
struct number_rules {
    rounding how = rounding::nearest; ///< of a fraction, to a whole number
    bool saturate = false;            ///< a number out of range becomes the largest or the smallest one
    bool is_signed = false;           ///< words are two's complement also where no number is negative
};

/// The memory of @p numbers, from address 0 on, rounded as @p rules say and exact otherwise. When at least
/// one of them is negative after rounding, all words are two's complement numbers, and hold -2^(width-1) to
/// 2^(width-1)-1; else they hold 0 to 2^width-1. Time and memory are in proportion to the bits.
/// @throws std::overflow_error for a number out of range where these do not saturate; what() says which one,
/// its address and the limits
/// @throws std::domain_error for what is no finite number; what() names its address
/// @throws std::invalid_argument when there are no numbers, and for a width that memory_image() does not take
[[nodiscard]] KVRIMAGE_API memory_image number_words(std::span<const generated_number> numbers,
                                                     std::uint32_t width, const number_rules& rules = {});

} // namespace kvrimage

#pragma once

#include "kvr/numeric/digit_value.h"

namespace kvrimage {

// Characters of a RIF file.

[[nodiscard]] inline bool is_hex_digit(char character) noexcept {
    return kvr::digit_value(character) < 16;
}

/// Returns whether @p character is a hexadecimal digit, or "X" or "x" for four don't-care bits.
[[nodiscard]] inline bool is_rif_digit(char character) noexcept {
    return kvr::digit_value(character) <= kvr::dont_care_digit;
}

/// Returns whether @p character is "U" or "u", which the library kvr accepts in words although it is not a
/// digit.
[[nodiscard]] inline bool is_unknown_digit(char character) noexcept {
    return character == 'U' || character == 'u';
}

[[nodiscard]] inline bool is_letter_or_digit(char character) noexcept {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

} // namespace kvrimage

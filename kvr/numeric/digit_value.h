#pragma once

#include "kvr/memory/memory_types.h"

#include <array>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace kvr {

/// The result of digit_value() for "X" and "x".
inline constexpr unsigned char dont_care_digit = 16;

/// The result of digit_value() for a character that is no digit in any radix.
inline constexpr unsigned char no_digit = 255;

inline constexpr std::string_view upper_case_digits = "0123456789ABCDEF";

inline constexpr std::array<unsigned char, 256> digit_values = [] {
    std::array<unsigned char, 256> values{};
    values.fill(no_digit);
    for (unsigned char value = 0; value < 16; ++value) {
        const auto digit = static_cast<unsigned char>(upper_case_digits[value]);
        values[digit] = value;
        if (digit >= 'A') {
            values[digit - 'A' + std::size_t{'a'}] = value;
        }
    }
    values['X'] = values['x'] = dont_care_digit;
    return values;
}();

/// Returns the value of a hexadecimal digit of either case (0 to 15), dont_care_digit or no_digit.
constexpr unsigned char digit_value(char character) {
    return digit_values[static_cast<unsigned char>(character)];
}

constexpr bool is_decimal_digit(char character) {
    return character >= '0' && character <= '9';
}

/// Returns the bits of one digit: 1, 4 and 3 for RADIX_BIN, RADIX_HEX and RADIX_OCT, 0 for any other radix.
constexpr unsigned bits_per_digit(KVR_MEMORY_RADIXES radix) {
    switch (radix) {
    case RADIX_BIN:
        return 1;
    case RADIX_HEX:
        return 4;
    case RADIX_OCT:
        return 3;
    default:
        return 0;
    }
}

constexpr bool is_decimal(KVR_MEMORY_RADIXES radix) {
    return radix == RADIX_DEC || radix == RADIX_UNS;
}

/// Returns the digits of a word of @p width bits if each digit has @p bits bits.
constexpr std::size_t digit_count(std::size_t width, unsigned bits) {
    return width / bits + (width % bits != 0 ? 1 : 0);
}

/// Returns the bits of @p digits digits of at most 4 bits each.
/// @throws std::length_error if std::size_t cannot count them
constexpr std::size_t bit_count(std::size_t digits, unsigned bits_per_digit) {
    constexpr std::size_t most_digits = std::numeric_limits<std::size_t>::max() / 4;
    if (digits > most_digits) {
        throw std::length_error("kvr: the number has too many digits");
    }
    return digits * bits_per_digit;
}

} // namespace kvr

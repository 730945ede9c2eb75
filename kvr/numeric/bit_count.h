#pragma once

#include <cstddef>
#include <limits>
#include <stdexcept>

namespace kvr {

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

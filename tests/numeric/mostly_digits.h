#pragma once

#include "kvr/numeric/digit_value.h"

#include <random>
#include <string>

namespace kvr {

inline bool is_hexadecimal(char character) {
    return digit_value(character) < 16;
}

/// Sixteen characters, most of them digits.
inline std::string mostly_digits(std::mt19937& random) {
    std::string text(16, '0');
    for (char& character : text) {
        character =
            random() % 20 == 0 ? static_cast<char>(random() % 256) : "0123456789ABCDEFabcdef"[random() % 22];
    }
    return text;
}

} // namespace kvr

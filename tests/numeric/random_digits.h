#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace kvr_test {

/// @p count characters of @p alphabet.
inline std::string random_digits(std::mt19937_64& random, std::size_t count, const std::string& alphabet) {
    std::string digits;
    for (std::size_t index = 0; index < count; ++index) {
        digits += alphabet[random() % alphabet.size()];
    }
    return digits;
}

} // namespace kvr_test

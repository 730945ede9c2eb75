#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kvr {

/// The two-digit texts of all numbers below base * base, for formatting many numbers.
class digit_pairs {
public:
    constexpr digit_pairs(std::uint32_t base, std::string_view digits) : numbers(base * base) {
        for (std::uint32_t number = 0; number < numbers; ++number) {
            pairs[2 * std::size_t{number}] = digits[number / base];
            pairs[2 * std::size_t{number} + 1] = digits[number % base];
        }
    }

    /// Returns the number of texts.
    [[nodiscard]] constexpr std::uint32_t count() const noexcept { return numbers; }

    /// Writes the two digits of @p number, which must be below count(). Returns the position after them.
    char* put(std::uint32_t number, char* to) const noexcept {
        std::memcpy(to, pairs.data() + 2 * std::size_t{number}, 2);
        return to + 2;
    }

private:
    std::uint32_t numbers;
    std::array<char, 512> pairs{};
};

inline constexpr std::string_view lower_hex_digits = "0123456789abcdef";
inline constexpr digit_pairs lower_hex_pairs(16, lower_hex_digits);
inline constexpr digit_pairs upper_hex_pairs(16, "0123456789ABCDEF");

} // namespace kvr

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kvr {

/// The two-digit texts of the numbers below base * base, for code that formats many numbers in a row.
class digit_pairs {
public:
    constexpr digit_pairs(std::uint32_t base, std::string_view digits) : numbers(base * base) {
        for (std::uint32_t number = 0; number < numbers; ++number) {
            pairs[2 * std::size_t{number}] = digits[number / base];
            pairs[2 * std::size_t{number} + 1] = digits[number % base];
        }
    }

    /// The number of numbers that have a text here.
    [[nodiscard]] constexpr std::uint32_t count() const noexcept { return numbers; }

    /// Writes the two digits of @p number, which must be below count(), and returns the position after them.
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

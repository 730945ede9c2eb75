#pragma once

#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kvr {

// Conversion between numbers and the digits of a character block.

inline constexpr std::size_t block_digits = 8;
inline constexpr std::uint64_t decimal_block = 100'000'000; ///< 10^block_digits

/// Number of hexadecimal digits of a limb.
inline constexpr std::size_t limb_hex_digits = 16;

inline bool are_decimal_digits(std::string_view text) {
    if (text.size() < block_digits) {
        return std::ranges::all_of(text, is_decimal_digit);
    }
    // The last block may overlap the previous one.
    const char* const last = text.data() + text.size() - block_digits;
    for (const char* block = text.data(); block < last; block += block_digits) {
        if (!are_decimal(load_eight(block))) {
            return false;
        }
    }
    return are_decimal(load_eight(last));
}

/// Returns the value of eight decimal digits. Digits are combined to pairs, pairs to fours, fours to the
/// result.
constexpr std::uint64_t decimal_block_value(std::uint64_t block) {
    block = (block & eight_of(0x0F)) * (10 * 256 + 1) >> 8;
    block = (block & 0x00FF00FF00FF00FFU) * (100 * 65536 + 1) >> 16;
    return (block & 0x0000FFFF0000FFFFU) * (10000 * 4294967296U + 1) >> 32;
}

/// Returns the eight decimal digits of @p value, the LEAST significant one in the lowest byte. Precondition:
/// value < decimal_block. The divisions are multiplications of all lanes at once.
constexpr std::uint64_t reversed_decimal_block(std::uint64_t value) {
    const std::uint64_t high_four = value / 10000;
    const std::uint64_t fours = (value - high_four * 10000) | high_four << 32;
    // For lanes below 10000, x / 100 is x * 5243 / 2^19.
    const std::uint64_t hundreds = (fours * 5243 >> 19) & 0x0000007F0000007FU;
    const std::uint64_t pairs = (fours - hundreds * 100) | hundreds << 16;
    // For lanes below 100, x / 10 is x * 103 / 2^10.
    const std::uint64_t tens = (pairs * 103 >> 10) & 0x000F000F000F000FU;
    return ((pairs - tens * 10) | tens << 8) + eight_of('0');
}

/// The two upper-case hexadecimal digits of each byte, concatenated.
inline constexpr std::array<char, 512> hex_digit_pairs = [] {
    std::array<char, 512> pairs{};
    for (std::size_t byte = 0; byte < 256; ++byte) {
        pairs[2 * byte] = upper_case_digits[byte >> 4];
        pairs[2 * byte + 1] = upper_case_digits[byte & 15];
    }
    return pairs;
}();

/// Writes the two upper-case hexadecimal digits of the lowest byte of @p value.
inline void write_hex_pair(char* place, std::uint64_t value) {
    std::memcpy(place, hex_digit_pairs.data() + 2 * (value & 0xFF), 2);
}

/// Writes the sixteen upper-case hexadecimal digits of a limb.
inline void write_hex_limb(char* place, std::uint64_t limb) {
    for (std::size_t pair = limb_hex_digits / 2; pair-- > 0; limb >>= 8) {
        write_hex_pair(place + 2 * pair, limb);
    }
}

/// Writes the lowest @p count upper-case hexadecimal digits of @p value.
inline void write_hex_digits(char* place, std::size_t count, std::uint64_t value) {
    for (; count >= 2; count -= 2, value >>= 8) {
        write_hex_pair(place + count - 2, value);
    }
    if (count != 0) {
        *place = upper_case_digits[value & 15];
    }
}

} // namespace kvr

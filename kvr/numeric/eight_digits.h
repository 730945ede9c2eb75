#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Eight characters at once in one 64-bit number, the first of them in the lowest byte. All of it is plain
// arithmetic, the same on every machine.

namespace kvr {

/// The eight characters at @p text.
inline std::uint64_t load_eight(const char* text) noexcept {
    std::uint64_t eight = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&eight, text, sizeof(eight));
    } else {
        for (std::size_t at = 0; at < sizeof(eight); ++at) {
            eight |= std::uint64_t{static_cast<unsigned char>(text[at])} << (8 * at);
        }
    }
    return eight;
}

/// Writes the characters of @p eight to @p text.
inline void store_eight(std::uint64_t eight, char* text) noexcept {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(text, &eight, sizeof(eight));
    } else {
        for (std::size_t at = 0; at < sizeof(eight); ++at) {
            text[at] = static_cast<char>(eight >> (8 * at) & 0xFF);
        }
    }
}

/// The number in which every byte is @p byte.
constexpr std::uint64_t eight_of(unsigned char byte) noexcept {
    return byte * std::uint64_t{0x0101010101010101};
}

/// What eight characters are: in either number the highest bit of a byte belongs to its character, and the
/// other bits are 0.
struct eight_classes {
    std::uint64_t other;      ///< no hexadecimal digit
    std::uint64_t lower_case; ///< "a" to "f"
};

constexpr eight_classes classes_of_eight(std::uint64_t eight) noexcept {
    constexpr std::uint64_t highest = eight_of(0x80);
    // Without the highest bits no sum carries into the next byte; characters that have one are no digits.
    const std::uint64_t low = eight & ~highest;
    const std::uint64_t folded = low | eight_of(0x20);
    const std::uint64_t decimal = (low + eight_of(0x80 - '0')) & ~(low + eight_of(0x7F - '9'));
    const std::uint64_t letter = (folded + eight_of(0x80 - 'a')) & ~(folded + eight_of(0x7F - 'f'));
    return {(~(decimal | letter) | eight) & highest, letter & (low << 2U) & ~eight & highest};
}

/// @p eight with "A" to "F" for "a" to "f".
constexpr std::uint64_t in_upper_case(std::uint64_t eight, const eight_classes& classes) noexcept {
    return eight & ~(classes.lower_case >> 2U);
}

/// The four bytes that eight hexadecimal digits spell, each in 16 bits of its own, the first in the lowest.
constexpr std::uint64_t four_bytes(std::uint64_t eight) noexcept {
    const std::uint64_t values = (eight & eight_of(0x0F)) + 9 * (eight >> 6U & eight_of(0x01));
    return (values << 4U | values >> 8U) & 0x00FF00FF00FF00FFU;
}

/// The sum of four numbers of 16 bits, modulo 2^16.
constexpr std::uint32_t sum_of_four(std::uint64_t four) noexcept {
    return static_cast<std::uint32_t>(four * 0x0001000100010001U >> 48U);
}

} // namespace kvr

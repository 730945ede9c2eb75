#pragma once

#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kvr {

// Many digits at once, in the bytes of a machine word or of a vector register.

inline constexpr std::size_t block_digits = 8;
inline constexpr std::uint64_t decimal_block = 100'000'000; ///< 10^block_digits

/// The hexadecimal digits of a limb.
inline constexpr std::size_t limb_hex_digits = 16;

constexpr std::uint64_t every_byte(std::uint64_t value) {
    return 0x0101010101010101U * value;
}

/// Eight characters, the first one in the lowest byte.
inline std::uint64_t load_block(const char* text) {
    std::uint64_t block = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&block, text, sizeof block);
    } else {
        for (std::size_t index = block_digits; index-- > 0;) {
            block = block << 8 | static_cast<unsigned char>(text[index]);
        }
    }
    return block;
}

/// The inverse of load_block().
inline void store_block(char* place, std::uint64_t block) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(place, &block, sizeof block);
    } else {
        for (std::size_t index = 0; index < block_digits; ++index) {
            place[index] = static_cast<char>(block >> (8 * index));
        }
    }
}

/// Whether all eight characters are decimal digits. The lowest byte that is none gets neither carry nor
/// borrow from below and so sets its top bit in one of the two terms.
constexpr bool is_decimal_block(std::uint64_t block) {
    return (((block + every_byte(0x7F - '9')) | (block - every_byte('0'))) & every_byte(0x80)) == 0;
}

inline bool are_decimal_digits(std::string_view text) {
    if (text.size() < block_digits) {
        return std::ranges::all_of(text, is_decimal_digit);
    }
    // The last block may overlap the one before.
    const char* const last = text.data() + text.size() - block_digits;
    for (const char* block = text.data(); block < last; block += block_digits) {
        if (!is_decimal_block(load_block(block))) {
            return false;
        }
    }
    return is_decimal_block(load_block(last));
}

/// The value of eight decimal digits: neighbours are joined to pairs, pairs to fours, fours to the whole.
constexpr std::uint64_t decimal_block_value(std::uint64_t block) {
    block = (block & every_byte(0x0F)) * (10 * 256 + 1) >> 8;
    block = (block & 0x00FF00FF00FF00FFU) * (100 * 65536 + 1) >> 16;
    return (block & 0x0000FFFF0000FFFFU) * (10000 * 4294967296U + 1) >> 32;
}

/// The eight decimal digits of @p value, the LEAST significant one in the lowest byte. Precondition:
/// value < decimal_block. The divisions are multiplications of all lanes at once.
constexpr std::uint64_t reversed_decimal_block(std::uint64_t value) {
    const std::uint64_t high_four = value / 10000;
    const std::uint64_t fours = (value - high_four * 10000) | high_four << 32;
    // Lanes below 10000: x / 100 is x * 5243 / 2^19.
    const std::uint64_t hundreds = (fours * 5243 >> 19) & 0x0000007F0000007FU;
    const std::uint64_t pairs = (fours - hundreds * 100) | hundreds << 16;
    // Lanes below 100: x / 10 is x * 103 / 2^10.
    const std::uint64_t tens = (pairs * 103 >> 10) & 0x000F000F000F000FU;
    return ((pairs - tens * 10) | tens << 8) + every_byte('0');
}

constexpr std::uint64_t reversed_bytes(std::uint64_t block) {
    block = (block & 0x00FF00FF00FF00FFU) << 8 | (block >> 8 & 0x00FF00FF00FF00FFU);
    block = (block & 0x0000FFFF0000FFFFU) << 16 | (block >> 16 & 0x0000FFFF0000FFFFU);
    return block << 32 | block >> 32;
}

/// Reads eight hexadecimal digits of either case into the low half of @p value. False if one is none.
constexpr bool read_hex_block(std::uint64_t block, std::uint64_t& value) {
    const std::uint64_t lower = block | every_byte(0x20);
    // Below 0x80 no byte carries into its neighbour, and the top bit of each one tells a comparison.
    const std::uint64_t seven = every_byte(0x7F);
    const std::uint64_t digit =
        ((block & seven) + every_byte(0x80 - '0')) & ~((block & seven) + every_byte(0x7F - '9'));
    const std::uint64_t letter =
        ((lower & seven) + every_byte(0x80 - 'a')) & ~((lower & seven) + every_byte(0x7F - 'f'));
    const std::uint64_t is_digit = (digit | letter) & ~block & every_byte(0x80);
    const std::uint64_t letters = block >> 6 & every_byte(1);
    std::uint64_t nibbles = (block & every_byte(0x0F)) + letters * 9;
    nibbles = (nibbles << 4 | nibbles >> 8) & 0x00FF00FF00FF00FFU;
    nibbles = (nibbles << 8 | nibbles >> 16) & 0x0000FFFF0000FFFFU;
    value = (nibbles << 16 | nibbles >> 32) & 0xFFFFFFFFU;
    return is_digit == every_byte(0x80);
}

/// The sixteen hexadecimal digits of a limb, first the most significant one. False if one is none. The
/// portable way.
inline bool read_hex_limb_by_words(const char* text, std::uint64_t& limb) {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    const bool is_high_valid = read_hex_block(load_block(text), high);
    const bool is_low_valid = read_hex_block(load_block(text + block_digits), low);
    limb = high << 32 | low;
    return is_high_valid && is_low_valid;
}

#if defined(__SSE2__)
/// What read_hex_limb_by_words() does, in one register.
inline bool read_hex_limb_by_vector(const char* text, std::uint64_t& limb) {
    __m128i characters;
    std::memcpy(&characters, text, sizeof characters);
    const __m128i lower = _mm_or_si128(characters, _mm_set1_epi8(0x20));
    // Comparisons of signed bytes: characters from 128 on are negative and thus below all digits.
    const __m128i digit = _mm_and_si128(_mm_cmpgt_epi8(characters, _mm_set1_epi8('0' - 1)),
                                        _mm_cmplt_epi8(characters, _mm_set1_epi8('9' + 1)));
    const __m128i letter = _mm_and_si128(_mm_cmpgt_epi8(lower, _mm_set1_epi8('a' - 1)),
                                         _mm_cmplt_epi8(lower, _mm_set1_epi8('f' + 1)));
    const __m128i nibbles =
        _mm_add_epi8(_mm_and_si128(characters, _mm_set1_epi8(0x0F)), _mm_and_si128(letter, _mm_set1_epi8(9)));
    const __m128i joined = _mm_or_si128(_mm_slli_epi16(nibbles, 4), _mm_srli_epi16(nibbles, 8));
    const __m128i bytes = _mm_and_si128(joined, _mm_set1_epi16(0xFF));
    const __m128i packed = _mm_packus_epi16(bytes, bytes);
    std::uint64_t first_byte_lowest = 0;
    std::memcpy(&first_byte_lowest, &packed, sizeof first_byte_lowest);
    limb = reversed_bytes(first_byte_lowest);
    return _mm_movemask_epi8(_mm_or_si128(digit, letter)) == 0xFFFF;
}
#endif

inline bool read_hex_limb(const char* text, std::uint64_t& limb) {
#if defined(__SSE2__)
    return read_hex_limb_by_vector(text, limb);
#else
    return read_hex_limb_by_words(text, limb);
#endif
}

/// The two upper-case hexadecimal digits of each byte, one after the other.
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

} // namespace kvr

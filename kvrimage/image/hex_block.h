#pragma once

#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_blocks.h"
#include "kvrimage/image/hex_text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// The kernels of hex_text.h: conversion between blocks of bytes and hexadecimal digits, with the sum of the
// bytes. The portable and the SSE2 form give the same results; the target machine selects one at compile
// time.

namespace kvrimage {

/// Returns the sum of the bytes of @p limb.
[[nodiscard]] constexpr unsigned sum_of_limb(std::uint64_t limb) noexcept {
    constexpr std::uint64_t every_second = 0x00FF00FF00FF00FF;
    return kvr::sum_of_four((limb & every_second) + (limb >> 8U & every_second));
}

namespace portable {

/// Converts blocks of digits to bytes.
class digit_block_decoder {
public:
    /// Converts 32 digits to 16 bytes.
    void parse_double_block(const char* digits, char* bytes) noexcept {
        take(digits, bytes, 8);
        take(digits + 16, bytes + 8, 8);
    }
    /// Converts 16 digits to 8 bytes. Only the last @p summed bytes, at least one, are added to the sum.
    void take(const char* digits, char* bytes, std::size_t summed) noexcept {
        std::uint64_t value = 0;
        is_valid = kvr::portable::read_sixteen(digits, value) && is_valid;
        kvr::store_eight(kvr::reversed_bytes(value), bytes);
        total += sum_of_limb(value << 8 * (8 - summed));
    }

    /// False if a character was no digit; bytes and sum are then unspecified.
    [[nodiscard]] bool are_digits() const noexcept { return is_valid; }
    [[nodiscard]] unsigned sum() const noexcept { return total; }

private:
    bool is_valid = true;
    unsigned total = 0;
};

/// Converts blocks of bytes to upper-case digits.
class digit_block_encoder {
public:
    /// Writes the 32 digits of 16 bytes.
    void take(const char* bytes, char* digits) noexcept {
        for (std::size_t at = 0; at < 16; at += 4) {
            kvr::store_eight(digits_of_four(bytes + at), digits + 2 * at);
        }
        total += sum_of_limb(kvr::load_eight(bytes)) + sum_of_limb(kvr::load_eight(bytes + 8));
    }

    /// Returns the sum of the bytes.
    [[nodiscard]] unsigned sum() const noexcept { return total; }

private:
    /// Returns the digits in the order of the text.
    static std::uint64_t digits_of_four(const char* bytes) noexcept {
        constexpr std::uint64_t low_digits = 0x000F000F000F000F;
        const std::uint64_t four = kvr::load_characters<4>(bytes);
        const std::uint64_t pairs = (four | four << 16U) & 0x0000FFFF0000FFFFU;
        const std::uint64_t spread = (pairs | pairs << 8U) & 0x00FF00FF00FF00FFU;
        const std::uint64_t values = (spread >> 4U & low_digits) | (spread & low_digits) << 8U;
        // Adding 6 to a value of ten or more carries into the bit above its digit.
        const std::uint64_t letters = (values + kvr::eight_of(6)) >> 4U & kvr::eight_of(1);
        return values + kvr::eight_of('0') + letters * ('A' - '0' - 10);
    }

    unsigned total = 0;
};

/// Writes the sixteen upper-case digits of @p limb.
inline void write_limb(std::uint64_t limb, char* digits) noexcept {
    kvr::write_hex_limb(digits, limb);
}

} // namespace portable

#if defined(__SSE2__)

namespace sse2 {

/// Sums bytes.
class byte_sum {
public:
    void add(__m128i bytes) noexcept { sums = _mm_add_epi64(sums, _mm_sad_epu8(bytes, _mm_setzero_si128())); }
    [[nodiscard]] unsigned total() const noexcept {
        return static_cast<unsigned>(_mm_cvtsi128_si32(_mm_add_epi64(sums, _mm_srli_si128(sums, 8))));
    }

private:
    __m128i sums = _mm_setzero_si128();
};

/// See the portable form.
class digit_block_decoder {
public:
    void parse_double_block(const char* digits, char* bytes) noexcept {
        const __m128i spelt = _mm_packus_epi16(bytes_of(digits), bytes_of(digits + 16));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), spelt);
        total.add(spelt);
    }
    void take(const char* digits, char* bytes, std::size_t summed) noexcept {
        const __m128i spelt = _mm_packus_epi16(bytes_of(digits), _mm_setzero_si128());
        _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), spelt);
        total.add(_mm_srl_epi64(spelt, _mm_cvtsi32_si128(static_cast<int>(8 * (8 - summed)))));
    }

    [[nodiscard]] bool are_digits() const noexcept { return _mm_movemask_epi8(valid) == 0xFFFF; }
    [[nodiscard]] unsigned sum() const noexcept { return total.total(); }

private:
    /// Returns the bytes of sixteen digits, each in a lane of 16 bits.
    __m128i bytes_of(const char* digits) noexcept {
        const __m128i characters = kvr::sse2::load(digits);
        const kvr::sse2::digit_masks masks = kvr::sse2::masks_of(characters);
        valid = _mm_and_si128(valid, masks.all());
        return kvr::sse2::bytes_of(kvr::sse2::values_of(characters, masks));
    }

    __m128i valid = _mm_set1_epi8(-1);
    byte_sum total;
};

/// Returns the digits with the given values.
inline __m128i digits_of(__m128i values) noexcept {
    const __m128i letters = _mm_cmpgt_epi8(values, _mm_set1_epi8(9));
    return _mm_add_epi8(_mm_add_epi8(values, _mm_set1_epi8('0')),
                        _mm_and_si128(letters, _mm_set1_epi8('A' - '0' - 10)));
}
inline __m128i low_digits(__m128i bytes) noexcept {
    return digits_of(_mm_and_si128(bytes, _mm_set1_epi8(0x0F)));
}
inline __m128i high_digits(__m128i bytes) noexcept {
    return low_digits(_mm_srli_epi16(bytes, 4));
}

/// See the portable form.
class digit_block_encoder {
public:
    void take(const char* bytes, char* digits) noexcept {
        const __m128i all = kvr::sse2::load(bytes);
        const __m128i high = high_digits(all);
        const __m128i low = low_digits(all);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(digits), _mm_unpacklo_epi8(high, low));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(digits + 16), _mm_unpackhi_epi8(high, low));
        total.add(all);
    }

    [[nodiscard]] unsigned sum() const noexcept { return total.total(); }

private:
    byte_sum total;
};

/// See the portable form.
inline void write_limb(std::uint64_t limb, char* digits) noexcept {
    const __m128i bytes = _mm_set_epi64x(0, static_cast<long long>(kvr::reversed_bytes(limb)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(digits),
                     _mm_unpacklo_epi8(high_digits(bytes), low_digits(bytes)));
}

} // namespace sse2

using sse2::digit_block_decoder;
using sse2::digit_block_encoder;
using sse2::write_limb;

#else

using portable::digit_block_decoder;
using portable::digit_block_encoder;
using portable::write_limb;

#endif

/// decode_and_sum() for at least 16 digits, inlined into the loop of the caller.
[[nodiscard]] inline decoded_hex decode_blocks(std::string_view digits, char* bytes) noexcept {
    digit_block_decoder decoder;
    const char* from = digits.data();
    const char* const end = from + digits.size();
    for (; end - from >= 32; from += 32, bytes += 16) {
        decoder.parse_double_block(from, bytes);
    }
    if (end - from >= 16) {
        decoder.take(from, bytes, 8);
        from += 16;
        bytes += 8;
    }
    if (from != end) {
        // Decode the last 16 digits, which overlap those before.
        const auto left = static_cast<std::size_t>(end - from) / 2;
        decoder.take(end - 16, bytes + left - 8, left);
    }
    return {decoder.are_digits(), decoder.sum()};
}

/// encode_hex(), inlined into the loop of the caller.
inline unsigned encode_blocks(std::string_view bytes, char* digits) noexcept {
    digit_block_encoder encoder;
    const char* from = bytes.data();
    const char* const end = from + bytes.size();
    for (; end - from >= 16; from += 16, digits += 32) {
        encoder.take(from, digits);
    }
    unsigned sum = encoder.sum();
    for (; from != end; ++from, digits += 2) {
        const auto byte = static_cast<unsigned char>(*from);
        sum += byte;
        kvr::write_hex_pair(digits, byte);
    }
    return sum;
}

} // namespace kvrimage

#pragma once

#include "kvr/numeric/eight_digits.h"

#include <array>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Sixteen characters at once: with the vector instructions that every x86-64 has, elsewhere, and in the
// tests, as two times eight.

namespace kvr {

/// What sixteen characters are. Which bits of a number belong to which character is nobody else's business:
/// the number is 0 when there is none of the kind.
struct sixteen_classes {
    std::uint64_t other;      ///< no hexadecimal digit
    std::uint64_t lower_case; ///< "a" to "f"
};

/// What the digits among sixteen characters are worth.
struct sixteen_sum {
    std::uint64_t other; ///< 0 when all are hexadecimal digits
    std::uint32_t sum;   ///< of the eight bytes that the digits spell
};

namespace portable {

inline sixteen_classes classes_of_sixteen(const char* text) noexcept {
    const eight_classes first = classes_of_eight(load_eight(text));
    const eight_classes second = classes_of_eight(load_eight(text + 8));
    return {first.other | second.other, first.lower_case | second.lower_case};
}

/// @param count the number of characters that count, an even one; the others are taken for "0".
inline sixteen_sum sum_of_sixteen(const char* text, std::size_t count) noexcept {
    sixteen_sum result{0, 0};
    for (std::size_t at = 0; at < 16; at += 8) {
        const std::size_t left = count > at ? count - at : 0;
        const std::uint64_t counting = left >= 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * left)) - 1;
        const std::uint64_t eight = load_eight(text + at);
        result.other |= classes_of_eight(eight).other & counting;
        result.sum += sum_of_four(four_bytes(eight & counting));
    }
    return result;
}

} // namespace portable

#if defined(__SSE2__)

namespace sse2 {

struct digit_masks {
    __m128i decimal;
    __m128i letter;
};

// The comparisons are signed, so that characters that are no ASCII are below all bounds.
inline digit_masks masks_of(__m128i text) noexcept {
    const auto between = [](__m128i characters, char first, char last) {
        return _mm_and_si128(_mm_cmpgt_epi8(characters, _mm_set1_epi8(static_cast<char>(first - 1))),
                             _mm_cmplt_epi8(characters, _mm_set1_epi8(static_cast<char>(last + 1))));
    };
    return {between(text, '0', '9'), between(_mm_or_si128(text, _mm_set1_epi8(0x20)), 'a', 'f')};
}

inline __m128i load(const char* text) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text)); // NOLINT: what the instruction asks for
}

inline std::uint64_t bits_of(__m128i mask) noexcept {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(mask));
}

inline sixteen_classes classes_of_sixteen(const char* text) noexcept {
    const __m128i characters = load(text);
    const digit_masks masks = masks_of(characters);
    const std::uint64_t digits = bits_of(_mm_or_si128(masks.decimal, masks.letter));
    // Bit 5 of a letter is what makes it lower case; shifted by two it is the highest.
    const __m128i lower_case = _mm_and_si128(masks.letter, _mm_slli_epi16(characters, 2));
    return {digits ^ 0xFFFF, bits_of(lower_case)};
}

/// See the portable one.
inline sixteen_sum sum_of_sixteen(const char* text, std::size_t count) noexcept {
    alignas(16) static constexpr std::array<unsigned char, 32> counting_first = [] {
        std::array<unsigned char, 32> mask{};
        for (std::size_t at = 0; at < 16; ++at) {
            mask[at] = 0xFF;
        }
        return mask;
    }();
    const __m128i characters = load(text);
    const __m128i counting = _mm_loadu_si128(
        reinterpret_cast<const __m128i*>(counting_first.data() + 16 - count)); // NOLINT: see load()
    const digit_masks masks = masks_of(characters);
    const __m128i digits = _mm_or_si128(masks.decimal, masks.letter);
    const __m128i nine_more = _mm_and_si128(masks.letter, _mm_set1_epi8(9));
    const __m128i values =
        _mm_and_si128(counting, _mm_add_epi8(_mm_and_si128(characters, _mm_set1_epi8(0x0F)), nine_more));
    const __m128i bytes = _mm_and_si128(_mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8)),
                                        _mm_set1_epi16(0x00FF));
    const __m128i sums = _mm_sad_epu8(bytes, _mm_setzero_si128());
    const __m128i sum = _mm_add_epi64(sums, _mm_srli_si128(sums, 8));
    return {bits_of(_mm_andnot_si128(digits, counting)), static_cast<std::uint32_t>(_mm_cvtsi128_si32(sum))};
}

} // namespace sse2

using sse2::classes_of_sixteen;
using sse2::sum_of_sixteen;

#else

using portable::classes_of_sixteen;
using portable::sum_of_sixteen;

#endif

} // namespace kvr

#pragma once

#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_value.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kvrimage {

[[nodiscard]] constexpr bool is_titxt_blank(char character) noexcept {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// Converts five bytes of regular TI-TXT at once: two digits and one blank each. Both implementations give the
// same result. They read 16 characters, ignoring the last one, and write 8 bytes, of which the last three are
// undefined. They return false, with undefined bytes, for any other text.

namespace portable {

[[nodiscard]] inline bool parse_five_titxt_bytes(const char* text, char* bytes) noexcept {
    bool is_right = true;
    for (std::size_t index = 0; index < 5; ++index, text += 3) {
        const unsigned high = kvr::digit_value(text[0]);
        const unsigned low = kvr::digit_value(text[1]);
        is_right = is_right && (high | low) <= 0xFU && is_titxt_blank(text[2]);
        bytes[index] = static_cast<char>(high << 4U | low);
    }
    return is_right;
}

} // namespace portable

#if defined(__SSE2__)

namespace sse2 {

[[nodiscard]] inline bool parse_five_titxt_bytes(const char* text, char* bytes) noexcept {
    constexpr unsigned digit_places = 0b011'011'011'011'011;
    constexpr unsigned blank_places = 0b100'100'100'100'100;
    const __m128i characters = kvr::sse2::load(text);
    const kvr::sse2::digit_masks masks = kvr::sse2::masks_of(characters);
    const __m128i controls = _mm_and_si128(_mm_cmpgt_epi8(characters, _mm_set1_epi8('\t' - 1)),
                                           _mm_cmplt_epi8(characters, _mm_set1_epi8('\r' + 1)));
    const __m128i blanks = _mm_or_si128(controls, _mm_cmpeq_epi8(characters, _mm_set1_epi8(' ')));
    const auto digit_bits = static_cast<unsigned>(_mm_movemask_epi8(masks.all()));
    const auto blank_bits = static_cast<unsigned>(_mm_movemask_epi8(blanks));
    if ((digit_bits & digit_places) != digit_places || (blank_bits & blank_places) != blank_places) {
        return false;
    }
    const __m128i values = kvr::sse2::values_of(characters, masks);
    // Combines each first digit with the second one in the next byte. Valid at bytes 0, 3, 6, 9 and 12.
    const __m128i spelt = _mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_si128(values, 1));
    std::array<std::uint64_t, 2> halves{};
    std::memcpy(halves.data(), &spelt, sizeof(spelt));
    const auto [low, high] = halves;
    kvr::store_eight((low & 0xFFU) | (low >> 16U & 0xFF00U) | (low >> 32U & 0xFF0000U) |
                         (high & 0xFF00U) << 16U | (high & 0xFF00000000U),
                     bytes);
    return true;
}

} // namespace sse2

using sse2::parse_five_titxt_bytes;

#else

using portable::parse_five_titxt_bytes;

#endif

} // namespace kvrimage

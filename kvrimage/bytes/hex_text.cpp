#include "kvrimage/bytes/hex_text.h"

#include "kvr/memory/io/digit_pairs.h"
#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/digit_value.h"

#include <cstdint>

namespace kvrimage {

namespace {

constexpr std::size_t encoded_at_once = 16; ///< bytes
constexpr std::size_t decoded_at_once = 16; ///< digits

/// The eight upper-case digits of the four bytes at @p bytes, in the order of the text.
std::uint64_t digits_of_four(const char* bytes) noexcept {
    constexpr std::uint64_t low_digits = 0x000F000F000F000F;
    const std::uint64_t four = kvr::load_characters<4>(bytes);
    const std::uint64_t pairs = (four | four << 16U) & 0x0000FFFF0000FFFFU;
    const std::uint64_t spread = (pairs | pairs << 8U) & 0x00FF00FF00FF00FFU;
    const std::uint64_t values = (spread >> 4U & low_digits) | (spread & low_digits) << 8U;
    // 6 more carries a value of ten or more into the bit above its digit.
    const std::uint64_t letters = (values + kvr::eight_of(6)) >> 4U & kvr::eight_of(1);
    return values + kvr::eight_of('0') + letters * ('A' - '0' - 10);
}

#if defined(__SSE2__)

/// What the digits worth @p values are.
__m128i sixteen_digits(__m128i values) noexcept {
    const __m128i letters = _mm_cmpgt_epi8(values, _mm_set1_epi8(9));
    return _mm_add_epi8(_mm_add_epi8(values, _mm_set1_epi8('0')),
                        _mm_and_si128(letters, _mm_set1_epi8('A' - '0' - 10)));
}

void encode_sixteen(const char* bytes, char* digits) noexcept {
    const __m128i all = kvr::sse2::load(bytes);
    const __m128i low_digit = _mm_set1_epi8(0x0F);
    const __m128i high = sixteen_digits(_mm_and_si128(_mm_srli_epi16(all, 4), low_digit));
    const __m128i low = sixteen_digits(_mm_and_si128(all, low_digit));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(digits), _mm_unpacklo_epi8(high, low));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(digits + encoded_at_once), _mm_unpackhi_epi8(high, low));
}

/// Decodes 16 digits. Not 0 when one of them is none.
unsigned decode_sixteen(const char* digits, char* bytes) noexcept {
    const __m128i characters = kvr::sse2::load(digits);
    const kvr::sse2::digit_masks masks = kvr::sse2::masks_of(characters);
    const __m128i spelt = kvr::sse2::bytes_of(kvr::sse2::values_of(characters, masks));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), _mm_packus_epi16(spelt, spelt));
    return static_cast<unsigned>(_mm_movemask_epi8(masks.all())) ^ 0xFFFFU;
}

unsigned sum_of_sixteen_bytes(const char* bytes) noexcept {
    const __m128i sums = _mm_sad_epu8(kvr::sse2::load(bytes), _mm_setzero_si128());
    return static_cast<unsigned>(_mm_cvtsi128_si32(_mm_add_epi64(sums, _mm_srli_si128(sums, 8))));
}

#else

void encode_sixteen(const char* bytes, char* digits) noexcept {
    for (std::size_t at = 0; at < encoded_at_once; at += 4) {
        kvr::store_eight(digits_of_four(bytes + at), digits + 2 * at);
    }
}

unsigned decode_sixteen(const char* digits, char* bytes) noexcept {
    std::uint64_t value = 0;
    const bool are_digits = kvr::read_sixteen(digits, value);
    kvr::store_eight(kvr::reversed_bytes(value), bytes);
    return are_digits ? 0 : 1;
}

unsigned sum_of_sixteen_bytes(const char* bytes) noexcept {
    constexpr std::uint64_t every_second = 0x00FF00FF00FF00FF;
    unsigned sum = 0;
    for (std::size_t at = 0; at < 16; at += 8) {
        const std::uint64_t eight = kvr::load_eight(bytes + at);
        sum += kvr::sum_of_four((eight & every_second) + (eight >> 8U & every_second));
    }
    return sum;
}

#endif

} // namespace

void encode_hex(std::string_view bytes, char* digits) noexcept {
    constexpr std::size_t few = 4;
    const char* from = bytes.data();
    const char* const end = from + bytes.size();
    for (; static_cast<std::size_t>(end - from) >= encoded_at_once; from += encoded_at_once) {
        encode_sixteen(from, digits);
        digits += 2 * encoded_at_once;
    }
    for (; static_cast<std::size_t>(end - from) >= few; from += few, digits += 2 * few) {
        kvr::store_eight(digits_of_four(from), digits);
    }
    for (; from != end; ++from) {
        digits = kvr::upper_hex_pairs.put(static_cast<unsigned char>(*from), digits);
    }
}

bool decode_hex(std::string_view digits, char* bytes) noexcept {
    const char* from = digits.data();
    const char* const end = from + digits.size();
    unsigned wrong = 0;
    for (; static_cast<std::size_t>(end - from) >= decoded_at_once; from += decoded_at_once) {
        wrong |= decode_sixteen(from, bytes);
        bytes += decoded_at_once / 2;
    }
    const auto left = static_cast<std::size_t>(end - from);
    if (left != 0 && digits.size() >= decoded_at_once) {
        // The last ones once more, with some of those before them.
        wrong |= decode_sixteen(end - decoded_at_once, bytes + left / 2 - decoded_at_once / 2);
        return wrong == 0;
    }
    if (left >= kvr::block_digits) {
        std::uint64_t value = 0;
        wrong |= kvr::read_eight(kvr::load_eight(from), value) ? 0U : 1U;
        for (unsigned shift = 32; shift != 0; ++bytes) {
            shift -= 8;
            *bytes = static_cast<char>(value >> shift);
        }
        from += kvr::block_digits;
    }
    for (; from != end; from += 2) {
        const unsigned high = kvr::digit_value(from[0]);
        const unsigned low = kvr::digit_value(from[1]);
        wrong |= (high | low) & ~0xFU;
        *bytes++ = static_cast<char>(high << 4U | low);
    }
    return wrong == 0;
}

unsigned sum_of_bytes(std::string_view bytes) noexcept {
    unsigned sum = 0;
    for (; bytes.size() >= 16; bytes.remove_prefix(16)) {
        sum += sum_of_sixteen_bytes(bytes.data());
    }
    for (const char byte : bytes) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

} // namespace kvrimage

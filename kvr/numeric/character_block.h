#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Processing of eight or sixteen characters at once. Eight characters are the bytes of a 64-bit number, the
// first in the lowest byte, on every machine. Sixteen are a vector register if available; otherwise, and in
// the tests, two blocks of eight.

namespace kvr {

// ---- Eight ----

template <std::size_t... place>
constexpr std::uint64_t join_characters(const char* text, std::index_sequence<place...> /*places*/) noexcept {
    return ((std::uint64_t{static_cast<unsigned char>(text[place])} << (8 * place)) | ...);
}

/// Loads @p count characters, at most 8; the bytes above are 0. Also works at compile time. The compiler
/// combines it to one load if possible.
template <std::size_t count>
constexpr std::uint64_t load_characters(const char* text) noexcept {
    static_assert(count <= sizeof(std::uint64_t));
    return join_characters(text, std::make_index_sequence<count>());
}

/// Loads eight characters.
inline std::uint64_t load_eight(const char* text) noexcept {
    if constexpr (std::endian::native == std::endian::little) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text, sizeof(eight));
        return eight;
    } else {
        return load_characters<8>(text);
    }
}

/// Stores the characters of @p eight at @p text.
inline void store_eight(std::uint64_t eight, char* text) noexcept {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(text, &eight, sizeof(eight));
    } else {
        for (std::size_t at = 0; at < sizeof(eight); ++at) {
            text[at] = static_cast<char>(eight >> (8 * at) & 0xFF);
        }
    }
}

/// Returns the number in which every byte is @p byte.
constexpr std::uint64_t eight_of(unsigned char byte) noexcept {
    return byte * std::uint64_t{0x0101010101010101};
}

/// Returns the highest bit of each byte of @p eight that is from @p first to @p last, two ASCII characters.
constexpr std::uint64_t which_are_between(std::uint64_t eight, char first, char last) noexcept {
    // Without the highest bits no sum carries into the next byte. Characters with this bit are not ASCII.
    const std::uint64_t low = eight & ~eight_of(0x80);
    const std::uint64_t from_first = low + eight_of(static_cast<unsigned char>(0x80 - first));
    const std::uint64_t above_last = low + eight_of(static_cast<unsigned char>(0x7F - last));
    return from_first & ~above_last & ~eight & eight_of(0x80);
}

/// The classes of eight characters. In either number, the highest bit of a byte stands for its character; all
/// other bits are 0.
struct eight_classes {
    std::uint64_t other;      ///< no hexadecimal digit
    std::uint64_t lower_case; ///< "a" to "f"
};

constexpr eight_classes classes_of_eight(std::uint64_t eight) noexcept {
    const std::uint64_t decimal = which_are_between(eight, '0', '9');
    const std::uint64_t letter = which_are_between(eight | eight_of(0x20), 'a', 'f');
    return {(decimal | letter) ^ eight_of(0x80), letter & eight << 2U};
}

/// True if all of @p eight are decimal digits. The lowest byte that is no digit gets no carry or borrow from
/// below, so it sets its highest bit in one of the two terms.
constexpr bool are_decimal(std::uint64_t eight) noexcept {
    return (((eight + eight_of(0x7F - '9')) | (eight - eight_of('0'))) & eight_of(0x80)) == 0;
}

/// Returns @p eight with "a" to "f" replaced by "A" to "F".
constexpr std::uint64_t in_upper_case(std::uint64_t eight, const eight_classes& classes) noexcept {
    return eight & ~(classes.lower_case >> 2U);
}

/// Returns @p eight with "A" to "Z" replaced by "a" to "z". All other bytes are unchanged, including those
/// above 127.
constexpr std::uint64_t fold_eight(std::uint64_t eight) noexcept {
    return eight | which_are_between(eight, 'A', 'Z') >> 2U;
}

/// Returns the value of each hexadecimal digit in its byte; a byte of 0 gives 0.
constexpr std::uint64_t values_of_eight(std::uint64_t digits) noexcept {
    return (digits & eight_of(0x0F)) + 9 * (digits >> 6U & eight_of(0x01));
}

/// Returns the four bytes that eight hexadecimal digits encode, each in 16 bits, the first in the lowest.
constexpr std::uint64_t four_bytes(std::uint64_t digits) noexcept {
    const std::uint64_t values = values_of_eight(digits);
    return (values << 4U | values >> 8U) & 0x00FF00FF00FF00FFU;
}

/// Returns the sum of four 16-bit numbers. Precondition: the sum is below 2^16.
constexpr std::uint32_t sum_of_four(std::uint64_t four) noexcept {
    return static_cast<std::uint32_t>(four * 0x0001000100010001U >> 48U);
}

constexpr std::uint64_t reversed_bytes(std::uint64_t eight) noexcept {
    eight = (eight & 0x00FF00FF00FF00FFU) << 8U | (eight >> 8U & 0x00FF00FF00FF00FFU);
    eight = (eight & 0x0000FFFF0000FFFFU) << 16U | (eight >> 16U & 0x0000FFFF0000FFFFU);
    return eight << 32U | eight >> 32U;
}

/// Parses eight hexadecimal digits of either case into the low half of @p value. Returns false if one is
/// invalid.
constexpr bool read_eight(std::uint64_t digits, std::uint64_t& value) noexcept {
    const std::uint64_t bytes = four_bytes(digits);
    const std::uint64_t pairs = (bytes << 8U | bytes >> 16U) & 0x0000FFFF0000FFFFU;
    value = (pairs << 16U | pairs >> 32U) & 0xFFFFFFFFU;
    return classes_of_eight(digits).other == 0;
}

// ---- Sixteen ----

/// The classes of sixteen characters. A number is 0 if there is no character of the class; which bits stand
/// for which character is not part of the interface.
struct sixteen_classes {
    std::uint64_t other;      ///< no hexadecimal digit
    std::uint64_t lower_case; ///< "a" to "f"
};

/// The sum of the digits among sixteen characters.
struct sixteen_sum {
    std::uint64_t other; ///< 0 if all are hexadecimal digits
    std::uint32_t sum;   ///< sum of the eight bytes that the digits encode
};

namespace portable {

inline sixteen_classes classes_of_sixteen(const char* text) noexcept {
    const eight_classes first = classes_of_eight(load_eight(text));
    const eight_classes second = classes_of_eight(load_eight(text + 8));
    return {first.other | second.other, first.lower_case | second.lower_case};
}

/// @param count number of characters that count, an even number; the others are treated as "0"
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

/// Parses sixteen hexadecimal digits, most significant first. Returns false if one is invalid.
inline bool read_sixteen(const char* text, std::uint64_t& value) noexcept {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    const bool is_high_valid = read_eight(load_eight(text), high);
    const bool is_low_valid = read_eight(load_eight(text + 8), low);
    value = high << 32U | low;
    return is_high_valid && is_low_valid;
}

} // namespace portable

#if defined(__SSE2__)

namespace sse2 {

/// The digits among sixteen characters.
struct digit_masks {
    __m128i decimal;
    __m128i letter;

    [[nodiscard]] __m128i all() const noexcept { return _mm_or_si128(decimal, letter); }
};

// The comparisons are signed, so characters outside ASCII are below all bounds.
inline digit_masks masks_of(__m128i text) noexcept {
    const auto between = [](__m128i characters, char first, char last) {
        return _mm_and_si128(_mm_cmpgt_epi8(characters, _mm_set1_epi8(static_cast<char>(first - 1))),
                             _mm_cmplt_epi8(characters, _mm_set1_epi8(static_cast<char>(last + 1))));
    };
    return {between(text, '0', '9'), between(_mm_or_si128(text, _mm_set1_epi8(0x20)), 'a', 'f')};
}

inline __m128i load(const void* text) noexcept {
    return _mm_loadu_si128(static_cast<const __m128i*>(text));
}

inline std::uint64_t bits_of(__m128i mask) noexcept {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(mask));
}

/// Returns the value of each digit.
inline __m128i values_of(__m128i digits, const digit_masks& masks) noexcept {
    return _mm_add_epi8(_mm_and_si128(digits, _mm_set1_epi8(0x0F)),
                        _mm_and_si128(masks.letter, _mm_set1_epi8(9)));
}

/// Returns the bytes that the digits of @p values encode, each in 16 bits.
inline __m128i bytes_of(__m128i values) noexcept {
    return _mm_and_si128(_mm_or_si128(_mm_slli_epi16(values, 4), _mm_srli_epi16(values, 8)),
                         _mm_set1_epi16(0x00FF));
}

inline sixteen_classes classes_of_sixteen(const char* text) noexcept {
    const __m128i characters = load(text);
    const digit_masks masks = masks_of(characters);
    // Bit 5 of a letter means lower case; a shift by two makes it the highest bit.
    const __m128i lower_case = _mm_and_si128(masks.letter, _mm_slli_epi16(characters, 2));
    return {bits_of(masks.all()) ^ 0xFFFF, bits_of(lower_case)};
}

/// See the portable form.
inline sixteen_sum sum_of_sixteen(const char* text, std::size_t count) noexcept {
    alignas(16) static constexpr std::array<unsigned char, 32> counting_first = [] {
        std::array<unsigned char, 32> mask{};
        for (std::size_t at = 0; at < 16; ++at) {
            mask[at] = 0xFF;
        }
        return mask;
    }();
    const __m128i characters = load(text);
    const __m128i counting = load(counting_first.data() + 16 - count);
    const digit_masks masks = masks_of(characters);
    const __m128i bytes = bytes_of(_mm_and_si128(counting, values_of(characters, masks)));
    const __m128i sums = _mm_sad_epu8(bytes, _mm_setzero_si128());
    const __m128i sum = _mm_add_epi64(sums, _mm_srli_si128(sums, 8));
    return {bits_of(_mm_andnot_si128(masks.all(), counting)),
            static_cast<std::uint32_t>(_mm_cvtsi128_si32(sum))};
}

/// See the portable form.
inline bool read_sixteen(const char* text, std::uint64_t& value) noexcept {
    const __m128i characters = load(text);
    const digit_masks masks = masks_of(characters);
    const __m128i bytes = bytes_of(values_of(characters, masks));
    const __m128i packed = _mm_packus_epi16(bytes, bytes);
    std::uint64_t first_byte_lowest = 0;
    std::memcpy(&first_byte_lowest, &packed, sizeof first_byte_lowest);
    value = reversed_bytes(first_byte_lowest);
    return bits_of(masks.all()) == 0xFFFF;
}

} // namespace sse2

using sse2::classes_of_sixteen;
using sse2::read_sixteen;
using sse2::sum_of_sixteen;

#else

using portable::classes_of_sixteen;
using portable::read_sixteen;
using portable::sum_of_sixteen;

#endif

} // namespace kvr

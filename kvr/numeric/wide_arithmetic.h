#pragma once

#include <cstdint>

namespace kvr {

/// An unsigned 128-bit number.
struct wide_limb {
    std::uint64_t low;
    std::uint64_t high;

    friend constexpr bool operator==(const wide_limb&, const wide_limb&) = default;
};

/// The whole product, from four products of half limbs.
constexpr wide_limb multiply_by_halves(std::uint64_t left, std::uint64_t right) {
    constexpr std::uint64_t low_half = 0xFFFFFFFF;
    const std::uint64_t left_low = left & low_half;
    const std::uint64_t left_high = left >> 32;
    const std::uint64_t right_low = right & low_half;
    const std::uint64_t right_high = right >> 32;

    const std::uint64_t lowest = left_low * right_low;
    const std::uint64_t middle = left_high * right_low + (lowest >> 32);
    const std::uint64_t other_middle = left_low * right_high + (middle & low_half);
    return {(other_middle << 32) | (lowest & low_half),
            left_high * right_high + (middle >> 32) + (other_middle >> 32)};
}

/// The whole product.
constexpr wide_limb multiply(std::uint64_t left, std::uint64_t right) {
#if defined(__SIZEOF_INT128__)
    // Only a typedef takes the word that admits the type.
    __extension__ typedef unsigned __int128 uint128; // NOLINT(modernize-use-using)
    const uint128 product = static_cast<uint128>(left) * right;
    return {static_cast<std::uint64_t>(product), static_cast<std::uint64_t>(product >> 64)};
#else
    return multiply_by_halves(left, right);
#endif
}

/// left * right + addend, which cannot overflow.
constexpr wide_limb multiply_add(std::uint64_t left, std::uint64_t right, std::uint64_t addend) {
    wide_limb sum = multiply(left, right);
    sum.low += addend;
    sum.high += sum.low < addend ? 1 : 0;
    return sum;
}

/// The largest power of ten in a limb, and its exponent.
inline constexpr std::uint64_t decimal_chunk = 10'000'000'000'000'000'000U;
inline constexpr unsigned decimal_chunk_digits = 19;

/// floor((2^128 - 1) / decimal_chunk) - 2^64
inline constexpr std::uint64_t decimal_chunk_reciprocal = 0xD83C94FB6D2AC34A;

struct chunk_division {
    std::uint64_t quotient;
    std::uint64_t remainder;
};

/// Divides (high, low) by decimal_chunk. Precondition: high < decimal_chunk.
///
/// A division by a constant, with two multiplications: the reciprocal gives a quotient that is one too
/// large at most half of the time and one too small hardly ever. It needs a divisor whose top bit is set,
/// as that of decimal_chunk is.
constexpr chunk_division divide_by_decimal_chunk(std::uint64_t high, std::uint64_t low) {
    const wide_limb estimate = multiply_add(decimal_chunk_reciprocal, high, low);
    std::uint64_t quotient = estimate.high + high + 1;
    std::uint64_t remainder = low - quotient * decimal_chunk;
    const std::uint64_t too_large = remainder > estimate.low ? 1 : 0;
    quotient -= too_large;
    remainder += decimal_chunk & (0 - too_large);
    if (remainder >= decimal_chunk) [[unlikely]] {
        ++quotient;
        remainder -= decimal_chunk;
    }
    return {quotient, remainder};
}

} // namespace kvr

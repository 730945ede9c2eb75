#pragma once

#include <bit>
#include <cstdint>

namespace kvr {

/// An unsigned 128-bit number.
struct wide_limb {
    std::uint64_t low;
    std::uint64_t high;

    friend constexpr bool operator==(const wide_limb&, const wide_limb&) = default;
};

/// Returns the full product by four multiplications of half limbs.
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

/// Returns the full product.
constexpr wide_limb multiply(std::uint64_t left, std::uint64_t right) {
#if defined(__SIZEOF_INT128__)
    // Only a typedef accepts the keyword that permits the type.
    __extension__ typedef unsigned __int128 uint128; // NOLINT(modernize-use-using)
    const uint128 product = static_cast<uint128>(left) * right;
    return {static_cast<std::uint64_t>(product), static_cast<std::uint64_t>(product >> 64)};
#else
    return multiply_by_halves(left, right);
#endif
}

/// Returns left * right + addend, which cannot overflow.
constexpr wide_limb multiply_add(std::uint64_t left, std::uint64_t right, std::uint64_t addend) {
#if defined(__SIZEOF_INT128__)
    __extension__ typedef unsigned __int128 uint128; // NOLINT(modernize-use-using)
    const uint128 sum = static_cast<uint128>(left) * right + addend;
    return {static_cast<std::uint64_t>(sum), static_cast<std::uint64_t>(sum >> 64)};
#else
    wide_limb sum = multiply(left, right);
    sum.low += addend;
    sum.high += sum.low < addend ? 1 : 0;
    return sum;
#endif
}

/// The sum of up to 2^64 products, one column of a long multiplication. Portable form.
class column_sum_by_limbs {
public:
    constexpr void add_product(std::uint64_t left, std::uint64_t right) {
        const wide_limb product = multiply_add(left, right, low_);
        low_ = product.low;
        high_ += product.high;
        carries_ += high_ < product.high ? 1U : 0U;
    }

    /// Removes and returns the lowest limb. The sum becomes that of the next column.
    constexpr std::uint64_t take_limb() {
        const std::uint64_t limb = low_;
        low_ = high_;
        high_ = carries_;
        carries_ = 0;
        return limb;
    }

private:
    std::uint64_t low_ = 0;
    std::uint64_t high_ = 0;
    std::uint64_t carries_ = 0;
};

#if defined(__SIZEOF_INT128__)
/// Same as column_sum_by_limbs.
class column_sum {
public:
    constexpr void add_product(std::uint64_t left, std::uint64_t right) {
        carries_ += __builtin_add_overflow(sum_, static_cast<uint128>(left) * right, &sum_) ? 1U : 0U;
    }

    constexpr std::uint64_t take_limb() {
        const auto limb = static_cast<std::uint64_t>(sum_);
        sum_ = sum_ >> 64 | static_cast<uint128>(carries_) << 64;
        carries_ = 0;
        return limb;
    }

private:
    __extension__ typedef unsigned __int128 uint128; // NOLINT(modernize-use-using)
    uint128 sum_ = 0;
    std::uint64_t carries_ = 0;
};
#else
using column_sum = column_sum_by_limbs;
#endif

/// The largest power of ten that fits a limb, and its exponent.
inline constexpr std::uint64_t decimal_chunk = 10'000'000'000'000'000'000U;
inline constexpr unsigned decimal_chunk_digits = 19;

/// floor((2^128 - 1) / decimal_chunk) - 2^64
inline constexpr std::uint64_t decimal_chunk_reciprocal = 0xD83C94FB6D2AC34A;

struct chunk_division {
    std::uint64_t quotient;
    std::uint64_t remainder;
};

// divide_by_decimal_chunk() requires: with divisor d and reciprocal v, (2^64 + v) * d is below 2^128, and
// adding d once more is not.
static_assert(std::countl_zero(decimal_chunk) == 0);
static_assert(multiply(decimal_chunk_reciprocal, decimal_chunk).high < 0 - decimal_chunk);
static_assert(multiply_add(decimal_chunk_reciprocal, decimal_chunk, decimal_chunk).high == 0 - decimal_chunk);

/// Divides (high, low) by decimal_chunk. Precondition: high < decimal_chunk.
///
/// The division by a constant takes two multiplications. The quotient estimated with the reciprocal is one
/// too large in at most half of all cases, and rarely one too small. The top bit of the divisor must be set,
/// as it is in decimal_chunk.
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

#pragma once

#include "kvr/export.h"

/// @file
/// 32-bit integer arithmetic. Products, including intermediate ones, wrap modulo 2^32 and nothing is
/// reported; only kvr_is_power_of() is exact. The result is 0 if the search for a power would never end: base
/// 0 or 1, or wrapped products that never reach the wanted size. A search takes at most 31 products without a
/// wrap, and up to 2^30 with wrapped products.

/// Returns the smallest k with 2^k >= @p x; 0 for @p x of 0 or 1, and above 2^31.
KVR_API unsigned int kvr_ceil_log2(unsigned int x);

/// Returns the number of factors @p base whose product is at least @p x; 0 for @p x of 0 or 1.
KVR_API unsigned int kvr_ceil_log(unsigned int x, unsigned int base);

/// Same as kvr_ceil_log2(), the ceiling (5 gives 3); callers rely on it.
KVR_API unsigned int kvr_floor_log2(unsigned int x);

/// Returns the largest k with @p base^k <= @p x; 0 for @p x of 0 or 1.
KVR_API unsigned int kvr_floor_log(unsigned int x, unsigned int base);

/// Returns @p base^@p exponent; 1 for an exponent below 1.
KVR_API int kvr_power(int base, int exponent);

/// Returns whether @p value is @p base^k for a k of at least 0, so 1 is a power of every base. Exact: no
/// product wraps. Takes at most 31 steps.
KVR_API bool kvr_is_power_of(int base, int value);

/// Returns the smallest power of @p base that is at least @p numerator / @p denominator rounded up: at least
/// 1, and for base 2 at most 2^30 even if the quotient is greater; callers rely on it. The division truncates
/// toward zero, and only a positive remainder rounds up. 0 if the quotient is undefined (denominator 0) or
/// does not fit (-2^31 / -1).
KVR_API int kvr_get_ceil_quotient_closest_to_power_of(int base, int numerator, int denominator);

/// Approximates @p numerator / @p denominator by a continued fraction of at most @p max_terms terms, the last
/// one rounded.
///
/// @param out_numerator, out_denominator unchanged if @p max_terms is below 1, if no candidate is
///        accepted, and if a division has no result (by 0, or -2^31 / -1).
/// @param max_denominator terms are added until the fraction is exact or its denominator exceeds this; the
///        result is the last candidate that did not exceed it. -1: no limit.
KVR_API void kvr_find_simple_integer_fraction(int numerator, int denominator, int& out_numerator,
                                              int& out_denominator, int max_denominator, int max_terms);

#pragma once

#include "kvr/export.h"

/// @file
/// Integer arithmetic on 32 bits. Products wrap modulo 2^32, also on the way to a result, and nothing is
/// reported; only kvr_is_power_of() computes exactly. Where a search for a power would never end (base 0 or
/// 1, or products that wrap and never reach the wanted size), the result is 0. Where wrapped products reach
/// it late, the search takes up to 2^30 products; without a wrap, 31 at most.

/// The smallest k with 2^k >= @p x; 0 for @p x of 0 or 1, and above 2^31.
KVR_API unsigned int kvr_ceil_log2(unsigned int x);

/// How many factors @p base make a product of at least @p x; 0 for @p x of 0 or 1.
KVR_API unsigned int kvr_ceil_log(unsigned int x, unsigned int base);

/// The same as kvr_ceil_log2(), the ceiling (5 gives 3); callers rely on it.
KVR_API unsigned int kvr_floor_log2(unsigned int x);

/// The largest k with @p base^k <= @p x; 0 for @p x of 0 or 1.
KVR_API unsigned int kvr_floor_log(unsigned int x, unsigned int base);

/// @p base^@p exponent; 1 for an exponent below 1.
KVR_API int kvr_power(int base, int exponent);

/// True when @p value is @p base^k for a k of 0 or more, so that 1 is a power of every base. Computed
/// exactly: no product wraps here, in at most 31 steps.
KVR_API bool kvr_is_power_of(int base, int value);

/// The smallest power of @p base that is at least @p numerator / @p denominator rounded up: 1 at least,
/// and for base 2 at most 2^30, also for a greater quotient; callers rely on it. The division truncates
/// towards zero, and only a positive remainder rounds up. 0 for a quotient that does not exist (denominator
/// 0) or does not fit (-2^31 / -1).
KVR_API int kvr_get_ceil_quotient_closest_to_power_of(int base, int numerator, int denominator);

/// Approximates @p numerator / @p denominator by a continued fraction of at most @p max_terms terms, its
/// last term rounded.
///
/// @param out_numerator, out_denominator left as they are when @p max_terms is below 1, when no candidate is
///        accepted, and when a division has no result (by 0, or -2^31 / -1).
/// @param max_denominator terms are added until the fraction is exact or its denominator exceeds this; the
///        last candidate that did not exceed it is the result. -1: no limit.
KVR_API void kvr_find_simple_integer_fraction(int numerator, int denominator, int& out_numerator,
                                              int& out_denominator, int max_denominator, int max_terms);

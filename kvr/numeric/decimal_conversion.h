#pragma once

#include "kvr/numeric/limb_arithmetic.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

// Numbers in chunks of 19 decimal digits, one a limb, least significant chunk first. Short numbers are
// converted limb by limb, long ones in halves: that takes somewhat more than twice the time of Karatsuba's
// multiplication of two numbers of their length.

/// A sufficient number of chunks for a number of @p bits bits.
constexpr std::size_t chunks_for_bits(std::size_t bits) {
    // A chunk holds 63.1166 bits; 1 / 63.1166 is a little below 1039 / 65536.
    return bits / 65536 * 1039 + bits % 65536 * 1039 / 65536 + 1;
}

/// Sets @p chunks to those of @p number. Precondition: there are at least chunks_for_bits() of them; all
/// that are above the number become 0.
void split_into_chunks(limb_span chunks, limb_view number);

/// Sets @p number to the value of @p chunks. Precondition: both have the same length, which is enough.
void join_chunks(limb_span number, limb_view chunks);

/// Sets @p chunks to the values of @p digits. Precondition: only "0" to "9", and exactly as many chunks as
/// they need.
void read_chunks(limb_span chunks, std::string_view digits);

/// The digits of the number, without leading zeros: 0 for zero.
std::size_t count_digits(limb_view chunks);

/// Writes the @p count lowest digits, least significant one first. Precondition: the chunks have as many.
void write_reversed_digits(char* place, limb_view chunks, std::size_t count);

/// Writes the @p count lowest digits, most significant one first. Precondition: the chunks have as many.
void write_digits(char* place, limb_view chunks, std::size_t count);

} // namespace kvr

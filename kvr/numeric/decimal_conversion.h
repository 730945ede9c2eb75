#pragma once

#include "kvr/numeric/limb_arithmetic.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

// Numbers in chunks of 19 decimal digits, one in each limb, least significant chunk first. Short numbers are
// converted limb by limb, long ones by recursive halving. The latter takes somewhat more than twice the time
// of a Karatsuba multiplication of numbers of this length.

/// Returns an upper bound of the chunks of a number of @p bits bits.
constexpr std::size_t chunks_for_bits(std::size_t bits) {
    // A chunk has 63.1166 bits; 1 / 63.1166 is a little below 1039 / 65536.
    return bits / 65536 * 1039 + bits % 65536 * 1039 / 65536 + 1;
}

/// Converts @p number to @p chunks. Precondition: there are at least chunks_for_bits() of them; surplus ones
/// become 0.
void split_into_chunks(limb_span chunks, limb_view number);

/// Converts @p chunks to @p number. Precondition: both have the same length, which is sufficient.
void join_chunks(limb_span number, limb_view chunks);

/// Parses @p digits to @p chunks. Precondition: the digits are "0" to "9", and there are exactly as many
/// chunks as they need.
void read_chunks(limb_span chunks, std::string_view digits);

/// Returns the number of digits without leading zeros; 0 for zero.
std::size_t count_digits(limb_view chunks);

/// Writes the @p count lowest digits, least significant first. Precondition: the chunks have as many.
void write_reversed_digits(char* place, limb_view chunks, std::size_t count);

/// Writes the @p count lowest digits, most significant first. Precondition: the chunks have as many.
void write_digits(char* place, limb_view chunks, std::size_t count);

} // namespace kvr

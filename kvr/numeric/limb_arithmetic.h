#pragma once

#include <cstdint>
#include <span>

namespace kvr {

// Numbers in 64-bit limbs, least significant limb first. Leading zero limbs are always allowed.

using limb_span = std::span<std::uint64_t>;
using limb_view = std::span<const std::uint64_t>;

/// Returns the number without leading zero limbs.
limb_view without_leading_zeros(limb_view number);

/// sum += addend, in the limbs of sum. Returns the carry. Precondition: addend is not longer.
std::uint64_t add_limbs(limb_span sum, limb_view addend);

/// difference -= subtrahend, in the limbs of difference. Returns the borrow. Precondition: subtrahend is not
/// longer.
std::uint64_t subtract_limbs(limb_span difference, limb_view subtrahend);

/// number = -number in two's complement, in the limbs of number.
void negate_limbs(limb_span number);

/// Returns left < right.
bool is_less(limb_view left, limb_view right);

/// number = number * factor + carry, in the limbs of number. Returns the overflow.
std::uint64_t multiply_by_limb(limb_span number, std::uint64_t factor, std::uint64_t carry = 0);

/// product = left * right. Precondition: product has as many limbs as both factors together and overlaps
/// neither.
void multiply_limbs(limb_span product, limb_view left, limb_view right);

/// Schoolbook multiplication: sets @p columns to the limbs of left * right from limb @p first on. Each
/// product of two limbs is added to the column of its low half; products of columns below the first one are
/// ignored. Neither number may be empty, and the columns must not overlap them.
void multiply_columns(limb_span columns, limb_view left, limb_view right, std::size_t first = 0);

} // namespace kvr

#pragma once

#include <cstdint>
#include <span>

namespace kvr {

// Numbers as rows of 64-bit limbs, least significant limb first. Leading zero limbs are allowed everywhere.

using limb_span = std::span<std::uint64_t>;
using limb_view = std::span<const std::uint64_t>;

/// The number without its leading zero limbs.
limb_view without_leading_zeros(limb_view number);

/// sum += addend, in the limbs that sum has; returns the carry. Precondition: addend is not longer.
std::uint64_t add_limbs(limb_span sum, limb_view addend);

/// difference -= subtrahend, in the limbs that difference has; returns the borrow. Precondition: subtrahend
/// is not longer.
std::uint64_t subtract_limbs(limb_span difference, limb_view subtrahend);

/// number = -number in two's complement of the limbs that it has.
void negate_limbs(limb_span number);

/// Whether left < right.
bool is_less(limb_view left, limb_view right);

/// number = number * factor + carry, in the limbs that number has; returns what overflows them.
std::uint64_t multiply_by_limb(limb_span number, std::uint64_t factor, std::uint64_t carry = 0);

/// product = left * right. Precondition: product has as many limbs as both together and overlaps neither.
void multiply_limbs(limb_span product, limb_view left, limb_view right);

/// The schoolbook rule: sets @p columns to the limbs of left * right from the limb @p first on, as many
/// as there are columns, each product of two limbs in the column of its low half. Products of columns
/// below the first one do not count. Neither number is empty, and the columns overlap none.
void multiply_columns(limb_span columns, limb_view left, limb_view right, std::size_t first = 0);

} // namespace kvr

#pragma once

#include "kvr/numeric/limb_arithmetic.h"
#include "kvr/numeric/wide_arithmetic.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvr {

/// The chunks of 19 decimal digits that a number is converted in without splitting it into halves.
inline constexpr std::size_t base_chunks = 20;

/// What a division by a power of ten needs: power = 10^(19 * chunks), in exactly as many limbs as it has, and
/// reciprocal = floor(2^(128 * power.size()) / power) or a few units less, in one limb more.
struct power_of_ten {
    std::size_t chunks = 0;
    limb_view power;
    limb_view reciprocal;
};

/// Space for the limbs of a power_of_ten of any size.
struct long_power_of_ten {
    std::vector<std::uint64_t> power;
    std::vector<std::uint64_t> reciprocal;
    std::size_t chunks = 0;

    power_of_ten view() const { return {chunks, power, reciprocal}; }
};

/// The power for 1 to base_chunks chunks, and for twice as many as that if the number is even; computed on
/// first use and kept. No allocation.
power_of_ten short_power_of_ten(std::size_t chunks);

/// The square, without its reciprocal.
long_power_of_ten square_of(const power_of_ten& root);

/// The square with its reciprocal.
long_power_of_ten square_with_reciprocal(const power_of_ten& root);

/// Divides @p number, below divisor.power squared and not longer than that. The quotient goes to
/// @p quotient, the remainder to @p remainder, both of the length of divisor.power. @p scratch: see
/// division_scratch().
void divide_by_power(limb_view number, const power_of_ten& divisor, limb_span quotient, limb_span remainder,
                     limb_span scratch);

/// The limbs of scratch that a division by a power of @p power_limbs limbs needs.
constexpr std::size_t division_scratch(std::size_t power_limbs) {
    return 2 * power_limbs + 2;
}

} // namespace kvr

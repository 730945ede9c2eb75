#pragma once

#include "kvr/numeric/limb_arithmetic.h"
#include "kvr/numeric/wide_arithmetic.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvr {

/// The most chunks of 19 decimal digits in a number that is converted without halving.
inline constexpr std::size_t base_chunks = 20;

/// The data for a division by a power of ten. power = 10^(19 * chunks), in exactly the limbs it needs.
/// reciprocal = floor(2^(128 * power.size()) / power), or a few units less, in one limb more.
struct power_of_ten {
    std::size_t chunks = 0;
    limb_view power;
    limb_view reciprocal;
};

/// Storage for a power_of_ten of any size.
struct long_power_of_ten {
    std::vector<std::uint64_t> power;
    std::vector<std::uint64_t> reciprocal;
    std::size_t chunks = 0;

    power_of_ten view() const { return {chunks, power, reciprocal}; }
};

/// Returns the power for 1 to base_chunks chunks, or for an even number up to twice as many. It is computed
/// on first use and kept. No allocation.
power_of_ten short_power_of_ten(std::size_t chunks);

/// Returns the square, without its reciprocal.
long_power_of_ten square_of(const power_of_ten& root);

/// Returns the square with its reciprocal.
long_power_of_ten square_with_reciprocal(const power_of_ten& root);

/// Divides @p number, which has twice the limbs of divisor.power and is below its square. @p quotient and
/// @p remainder have the length of divisor.power. For @p scratch see division_scratch().
void divide_by_power(limb_view number, const power_of_ten& divisor, limb_span quotient, limb_span remainder,
                     limb_span scratch);

/// Returns the limbs of scratch space for a division by a power of @p power_limbs limbs.
constexpr std::size_t division_scratch(std::size_t power_limbs) {
    return 2 * power_limbs + 2;
}

} // namespace kvr

#include "kvr/numeric/power_of_ten.h"

#include <algorithm>
#include <cassert>

namespace kvr {

namespace {

constexpr std::size_t most_short_chunks = 2 * base_chunks;

/// A power needs one limb for each chunk: 10^(19 * chunks) has exactly `chunks` limbs as long as the bits
/// that each chunk has less than a limb (below 0.884) do not add up to a limb.
static_assert(most_short_chunks * 884 < std::size_t{64} * 1000);

struct short_limbs {
    std::array<std::uint64_t, most_short_chunks> power;
    std::array<std::uint64_t, most_short_chunks + 1> reciprocal;
};

/// Replaces number by floor(number / 10^19).
void divide_by_chunk(limb_span number) {
    std::uint64_t remainder = 0;
    for (std::size_t index = number.size(); index-- > 0;) {
        const chunk_division division = divide_by_decimal_chunk(remainder, number[index]);
        number[index] = division.quotient;
        remainder = division.remainder;
    }
}

/// Repeated division by 10^19 rounds down to the same result as one division by the power.
short_limbs limbs_of_short_power(std::size_t chunks) {
    short_limbs limbs{};
    limbs.power[0] = 1;
    std::array<std::uint64_t, 2 * most_short_chunks + 1> quotient{};
    quotient[2 * chunks] = 1;
    for (std::size_t count = 0; count < chunks; ++count) {
        multiply_by_limb(limb_span(limbs.power).first(chunks), decimal_chunk);
        divide_by_chunk(limb_span(quotient).first(2 * chunks + 1));
    }
    std::copy_n(quotient.begin(), chunks + 1, limbs.reciprocal.begin());
    return limbs;
}

/// Indexed by the number of chunks; unused entries are empty.
using short_powers = std::array<short_limbs, most_short_chunks + 1>;

bool is_short(std::size_t chunks) {
    return chunks <= base_chunks || chunks % 2 == 0;
}

short_powers all_short_powers() {
    short_powers powers{};
    for (std::size_t chunks = 1; chunks < powers.size(); ++chunks) {
        if (is_short(chunks)) {
            powers[chunks] = limbs_of_short_power(chunks);
        }
    }
    return powers;
}

/// Returns 2^(128 * n) - reciprocal * power, where power has n limbs. The result is below the power. First
/// corrects a reciprocal that is slightly too small.
std::vector<std::uint64_t> make_exact(limb_span reciprocal, limb_view power) {
    const std::size_t size = power.size();
    std::vector<std::uint64_t> rest(2 * size + 1);
    multiply_limbs(rest, reciprocal, power);
    negate_limbs(rest);
    const std::uint64_t one = 1;
    add_limbs(limb_span(rest).subspan(2 * size), limb_view(&one, 1));
    while (!is_less(rest, power)) {
        subtract_limbs(rest, power);
        add_limbs(reciprocal, limb_view(&one, 1));
    }
    rest.resize(size);
    return rest;
}

/// Returns the reciprocal of the square of a power, too small by a few units at most. With b = 2^64, the
/// power p of n limbs, its reciprocal r and the remainder d = b^2n - r * p, b^4n / p^2 is r^2 * (1 + 2 * d /
/// b^2n) and a few units.
std::vector<std::uint64_t> reciprocal_of_square(const power_of_ten& root, std::size_t square_size) {
    const std::size_t size = root.power.size();
    std::vector<std::uint64_t> exact(root.reciprocal.begin(), root.reciprocal.end());
    const std::vector<std::uint64_t> rest = make_exact(exact, root.power);
    std::vector<std::uint64_t> result(2 * size + 2);
    multiply_limbs(result, exact, exact);
    std::vector<std::uint64_t> correction(2 * size + 2);
    multiply_limbs(correction, limb_view(result).subspan(size), rest);
    const limb_view whole_correction = limb_view(correction).subspan(size);
    add_limbs(result, whole_correction);
    add_limbs(result, whole_correction);
    // Convert from the unit b^4n to that of the length of the square.
    const auto unused = static_cast<std::ptrdiff_t>(4 * size - 2 * square_size);
    result.erase(result.begin(), result.begin() + unused);
    result.resize(square_size + 1);
    return result;
}

/// Below this number of limbs, half of the columns of a product are faster than a full Karatsuba
/// multiplication.
constexpr std::size_t half_products_limbs = 56;

/// Sets @p quotient, of n limbs, to the limbs of top * reciprocal from limb n + 1 on. top and reciprocal have
/// n + 1 limbs each. The result may be 1 too small.
void estimate_quotient(limb_span quotient, limb_view top, limb_view reciprocal, limb_span scratch) {
    const std::size_t size = quotient.size();
    const bool is_short = size < half_products_limbs;
    // Two more columns at the bottom: everything below them is less than one unit.
    const std::size_t first = is_short ? size - 1 : 0;
    const limb_span columns = scratch.first(2 * size + 2 - first);
    if (is_short) {
        multiply_columns(columns, top, reciprocal, first);
    } else {
        multiply_limbs(columns, top, reciprocal);
    }
    std::ranges::copy(columns.subspan(size + 1 - first, size), quotient.begin());
}

/// Returns the lowest n + 1 limbs of quotient * power, which have n limbs each. The result is in the scratch
/// space.
limb_span low_product(limb_view quotient, limb_view power, limb_span scratch) {
    const std::size_t size = power.size();
    if (size < half_products_limbs) {
        multiply_columns(scratch.first(size + 1), quotient, power);
    } else {
        multiply_limbs(scratch.first(2 * size), quotient, power);
    }
    return scratch.first(size + 1);
}

} // namespace

power_of_ten short_power_of_ten(std::size_t chunks) {
    assert(chunks != 0 && chunks <= most_short_chunks && is_short(chunks));
    static const short_powers powers = all_short_powers();
    const short_limbs& limbs = powers[chunks];
    return {chunks, limb_view(limbs.power).first(chunks), limb_view(limbs.reciprocal).first(chunks + 1)};
}

long_power_of_ten square_of(const power_of_ten& root) {
    long_power_of_ten square;
    square.chunks = 2 * root.chunks;
    square.power.resize(2 * root.power.size());
    multiply_limbs(square.power, root.power, root.power);
    square.power.resize(without_leading_zeros(square.power).size());
    return square;
}

long_power_of_ten square_with_reciprocal(const power_of_ten& root) {
    long_power_of_ten square = square_of(root);
    square.reciprocal = reciprocal_of_square(root, square.power.size());
    return square;
}

/// Barrett division: with b = 2^64 and n limbs, (number / b^(n-1)) * reciprocal / b^(n+1) is the quotient or
/// slightly less: by at most 3 and the error of the reciprocal.
void divide_by_power(limb_view number, const power_of_ten& divisor, limb_span quotient, limb_span remainder,
                     limb_span scratch) {
    const std::size_t size = divisor.power.size();
    assert(number.size() == 2 * size && quotient.size() == size && remainder.size() == size);
    estimate_quotient(quotient, number.subspan(size - 1), divisor.reciprocal, scratch);
    const limb_span rest = low_product(quotient, divisor.power, scratch);
    // remainder = number - product, which is a small multiple of power: one more limb than power is enough.
    negate_limbs(rest);
    add_limbs(rest, number.first(size + 1));
    const std::uint64_t one = 1;
    while (!is_less(rest, divisor.power)) {
        subtract_limbs(rest, divisor.power);
        add_limbs(quotient, limb_view(&one, 1));
    }
    std::ranges::copy(rest.first(size), remainder.begin());
}

} // namespace kvr

#include "kvr/numeric/decimal_conversion.h"

#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/power_of_ten.h"
#include "kvr/numeric/wide_arithmetic.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>
#include <span>
#include <vector>

namespace kvr {

namespace {

/// From this number of chunks on, joining by halves is faster than one by one.
constexpr std::size_t join_chunks_in_halves = 64;

/// The number of chunks, rounded up so that it can be halved until at most base_chunks are left.
struct halving {
    std::size_t chunks; ///< chunks in the smallest step
    std::size_t doublings;
};

halving halving_of(std::size_t chunks) {
    std::size_t doublings = 0;
    while (digit_count(chunks, 1U << doublings) > base_chunks) {
        ++doublings;
    }
    return {digit_count(chunks, 1U << doublings), doublings};
}

/// Splits up to base_chunks chunks without a division. It computes number / 10^(19 * count) as a fraction of
/// count + 1 limbs. Each multiplication by 10^19 then produces the next chunk, highest first, above the
/// fraction; one limb less is needed after each.
///
/// The chunks are exact if the fraction is at least the exact quotient and at most 10^(-19 * count) above it.
/// This bound exceeds 2^(-64 * count), the unit of the second lowest limb. That unit is added, which
/// outweighs what was rounded down: the error of the reciprocal, number / 2^(128 * count), is below 2^(-64.8
/// * count), and the omitted products and limbs add up to less than 2^20 units of the lowest limb.
void split_by_fraction(limb_span chunks, limb_view number) {
    const std::size_t count = chunks.size();
    assert(count >= 2 && count <= base_chunks);
    const power_of_ten divisor = short_power_of_ten(count);
    // One more column at the bottom includes most of the carry into the fraction.
    std::array<std::uint64_t, base_chunks + 2> space; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const limb_span columns = limb_span(space).first(count + 2);
    multiply_columns(columns, without_leading_zeros(number), divisor.reciprocal, count - 2);
    limb_span fraction = columns.subspan(1);
    const std::uint64_t unit = 1;
    add_limbs(fraction.subspan(1), limb_view(&unit, 1));
    for (std::size_t index = count; index-- > 0;) {
        chunks[index] = multiply_by_limb(fraction, decimal_chunk);
        fraction = fraction.subspan(1);
    }
}

/// Splits two limbs, the higher one not 0: two divisions are faster than multiplying by a reciprocal.
void split_two_limbs(limb_span chunks, limb_view number) {
    const std::uint64_t above = number[1] / decimal_chunk;
    const chunk_division lowest = divide_by_decimal_chunk(number[1] % decimal_chunk, number[0]);
    const chunk_division middle = divide_by_decimal_chunk(above, lowest.quotient);
    chunks[0] = lowest.remainder;
    chunks[1] = middle.remainder;
    if (chunks.size() > 2) {
        chunks[2] = middle.quotient;
    }
}

/// The powers of ten by which a number is halved, smallest first.
class halving_powers {
public:
    halving_powers(const halving& steps, bool with_reciprocals) {
        long_.reserve(steps.doublings);
        powers_.reserve(steps.doublings);
        for (std::size_t level = 0; level < steps.doublings; ++level) {
            add(steps.chunks << level, with_reciprocals);
        }
    }

    const power_of_ten& operator[](std::size_t level) const { return powers_[level]; }

private:
    void add(std::size_t chunks, bool with_reciprocals) {
        if (powers_.size() < 2) {
            powers_.push_back(short_power_of_ten(chunks));
            return;
        }
        long_.push_back(with_reciprocals ? square_with_reciprocal(powers_.back())
                                         : square_of(powers_.back()));
        powers_.push_back(long_.back().view());
    }

    std::vector<long_power_of_ten> long_;
    std::vector<power_of_ten> powers_;
};

/// Precondition: number has twice the limbs of powers[level - 1] and is below the square of that power; on
/// level 0 it is below 10^(19 * chunks.size()).
void split_in_halves(limb_span chunks, limb_view number, const halving_powers& powers, std::size_t level) {
    if (level == 0) {
        split_by_fraction(chunks, number);
        return;
    }
    const power_of_ten& divisor = powers[level - 1];
    const std::size_t size = divisor.power.size();
    const std::size_t below = level > 1 ? 2 * powers[level - 2].power.size() : size;
    std::vector<std::uint64_t> space(2 * below + division_scratch(size));
    const limb_span quotient = limb_span(space).first(below);
    const limb_span remainder = limb_span(space).subspan(below, below);
    divide_by_power(number, divisor, quotient.first(size), remainder.first(size),
                    limb_span(space).subspan(2 * below));
    split_in_halves(chunks.first(divisor.chunks), remainder, powers, level - 1);
    split_in_halves(chunks.subspan(divisor.chunks), quotient, powers, level - 1);
}

void split_long_number(limb_span chunks, limb_view number, std::size_t needed) {
    const halving steps = halving_of(needed);
    const halving_powers powers(steps, true);
    std::vector<std::uint64_t> padded(2 * powers[steps.doublings - 1].power.size());
    std::ranges::copy(number, padded.begin());
    std::vector<std::uint64_t> all_chunks(steps.chunks << steps.doublings);
    split_in_halves(all_chunks, padded, powers, steps.doublings);
    std::copy_n(all_chunks.begin(), std::min(chunks.size(), all_chunks.size()), chunks.begin());
}

/// Multiplies by 10^19 and adds the next chunk, from the highest chunk on.
void join_one_by_one(limb_span number, limb_view chunks) {
    std::size_t size = 0;
    for (std::size_t index = chunks.size(); index-- > 0;) {
        const std::uint64_t carry = multiply_by_limb(number.first(size), decimal_chunk, chunks[index]);
        number[size] = carry;
        size += carry != 0 ? 1 : 0;
    }
    for (; size < number.size(); ++size) {
        number[size] = 0;
    }
}

void join_in_halves(limb_span number, limb_view chunks, const halving_powers& powers, std::size_t level) {
    if (chunks.size() < join_chunks_in_halves) {
        join_one_by_one(number, chunks);
        return;
    }
    static_assert(join_chunks_in_halves > base_chunks); // the smallest power has at most base_chunks chunks
    while (chunks.size() <= powers[level - 1].chunks) {
        --level;
    }
    const power_of_ten& factor = powers[level - 1];
    std::vector<std::uint64_t> space(chunks.size());
    const limb_span low = limb_span(space).first(factor.chunks);
    const limb_span high = limb_span(space).subspan(factor.chunks);
    join_in_halves(low, chunks.first(factor.chunks), powers, level - 1);
    join_in_halves(high, chunks.subspan(factor.chunks), powers, level - 1);
    const std::size_t used = high.size() + factor.power.size();
    std::ranges::fill(number.subspan(used), 0);
    multiply_limbs(number.first(used), high, factor.power);
    add_limbs(number, low);
}

std::uint64_t chunk_value(std::string_view digits) {
    std::uint64_t value = 0;
    while (digits.size() % block_digits != 0) {
        value = value * 10 + static_cast<unsigned char>(digits.front() - '0');
        digits.remove_prefix(1);
    }
    for (; !digits.empty(); digits.remove_prefix(block_digits)) {
        value = value * decimal_block + decimal_block_value(load_eight(digits.data()));
    }
    return value;
}

/// Returns the value of exactly 19 digits. The last three are the top of a block that overlaps the previous
/// one.
std::uint64_t whole_chunk_value(const char* digits) {
    constexpr std::size_t last_block = decimal_chunk_digits - block_digits;
    constexpr std::uint64_t last_three = 0xFFFFFF0000000000;
    return (decimal_block_value(load_eight(digits)) * decimal_block +
            decimal_block_value(load_eight(digits + block_digits))) *
               1000 +
           decimal_block_value(load_eight(digits + last_block) & last_three);
}

constexpr auto powers_within_a_chunk = [] {
    std::array<std::uint64_t, decimal_chunk_digits + 1> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

/// The digits of a chunk, least significant first, followed by zeros.
struct chunk_digits {
    std::uint64_t low;
    std::uint64_t middle;
    std::uint64_t high; ///< the last three digits
};

chunk_digits digits_of(std::uint64_t chunk) {
    const std::uint64_t upper = chunk / decimal_block;
    const std::uint64_t high = upper / decimal_block;
    return {reversed_decimal_block(chunk - upper * decimal_block),
            reversed_decimal_block(upper - high * decimal_block), reversed_decimal_block(high)};
}

constexpr std::size_t high_digits = decimal_chunk_digits - 2 * block_digits;

/// Writes exactly 19 digits, least significant first.
void write_reversed_chunk(char* place, std::uint64_t chunk) {
    const chunk_digits digits = digits_of(chunk);
    store_eight(digits.low, place);
    store_eight(digits.middle, place + block_digits);
    std::array<char, block_digits> high; // NOLINT(cppcoreguidelines-pro-type-member-init)
    store_eight(digits.high, high.data());
    std::memcpy(place + 2 * block_digits, high.data(), high_digits);
}

/// Writes exactly 19 digits, most significant first.
void write_chunk(char* place, std::uint64_t chunk) {
    const chunk_digits digits = digits_of(chunk);
    std::array<char, block_digits> high; // NOLINT(cppcoreguidelines-pro-type-member-init)
    store_eight(reversed_bytes(digits.high), high.data());
    std::memcpy(place, high.data() + (block_digits - high_digits), high_digits);
    store_eight(reversed_bytes(digits.middle), place + high_digits);
    store_eight(reversed_bytes(digits.low), place + high_digits + block_digits);
}

/// Copies less than 19 characters without the function call that an unknown count requires.
void copy_few(char* place, const char* digits, std::size_t count) {
    std::size_t copied = 0;
    for (; copied + block_digits <= count; copied += block_digits) {
        std::memcpy(place + copied, digits + copied, block_digits);
    }
    for (; copied < count; ++copied) {
        place[copied] = digits[copied];
    }
}

} // namespace

void split_into_chunks(limb_span chunks, limb_view number) {
    number = without_leading_zeros(number);
    if (number.size() <= 1) {
        std::ranges::fill(chunks, 0);
        if (!number.empty()) {
            chunks[0] = number[0] % decimal_chunk;
            if (chunks.size() > 1) {
                chunks[1] = number[0] / decimal_chunk;
            }
        }
        return;
    }
    const std::size_t bits = 64 * number.size() - static_cast<unsigned>(std::countl_zero(number.back()));
    const std::size_t needed = chunks_for_bits(bits);
    assert(needed <= chunks.size());
    for (std::uint64_t& chunk : chunks.subspan(needed)) {
        chunk = 0;
    }
    if (number.size() == 2) {
        split_two_limbs(chunks.first(needed), number);
    } else if (needed <= base_chunks) {
        split_by_fraction(chunks.first(needed), number);
    } else {
        split_long_number(chunks.first(needed), number, needed);
    }
}

void join_chunks(limb_span number, limb_view chunks) {
    assert(number.size() == chunks.size());
    if (chunks.size() < join_chunks_in_halves) {
        join_one_by_one(number, chunks);
        return;
    }
    const halving steps = halving_of(chunks.size());
    join_in_halves(number, chunks, halving_powers(steps, false), steps.doublings);
}

void read_chunks(limb_span chunks, std::string_view digits) {
    std::uint64_t* chunk = chunks.data();
    for (; digits.size() >= decimal_chunk_digits; digits.remove_suffix(decimal_chunk_digits)) {
        *chunk++ = whole_chunk_value(digits.data() + digits.size() - decimal_chunk_digits);
    }
    if (!digits.empty()) {
        *chunk = chunk_value(digits);
    }
}

std::size_t count_digits(limb_view chunks) {
    chunks = without_leading_zeros(chunks);
    if (chunks.empty()) {
        return 0;
    }
    // A bit is 0.30103 of a digit: the power found is the one just below the number or just above it.
    const std::uint64_t top = chunks.back();
    const auto estimate = static_cast<unsigned>(std::bit_width(top)) * 1233U >> 12;
    return (chunks.size() - 1) * decimal_chunk_digits + estimate +
           (top >= powers_within_a_chunk[estimate] ? 1 : 0);
}

void write_reversed_digits(char* place, limb_view chunks, std::size_t count) {
    for (; count >= decimal_chunk_digits; count -= decimal_chunk_digits, chunks = chunks.subspan(1)) {
        write_reversed_chunk(place, chunks.front());
        place += decimal_chunk_digits;
    }
    if (count > block_digits) {
        std::array<char, decimal_chunk_digits> top; // NOLINT(cppcoreguidelines-pro-type-member-init)
        write_reversed_chunk(top.data(), chunks.front());
        copy_few(place, top.data(), count);
    } else if (count != 0) {
        std::array<char, block_digits> top; // NOLINT(cppcoreguidelines-pro-type-member-init)
        store_eight(reversed_decimal_block(chunks.front() % decimal_block), top.data());
        copy_few(place, top.data(), count);
    }
}

void write_digits(char* place, limb_view chunks, std::size_t count) {
    for (; count >= decimal_chunk_digits; count -= decimal_chunk_digits, chunks = chunks.subspan(1)) {
        write_chunk(place + count - decimal_chunk_digits, chunks.front());
    }
    if (count != 0) {
        std::array<char, decimal_chunk_digits> top; // NOLINT(cppcoreguidelines-pro-type-member-init)
        write_chunk(top.data(), chunks.front());
        copy_few(place, top.data() + (decimal_chunk_digits - count), count);
    }
}

} // namespace kvr

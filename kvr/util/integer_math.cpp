#include "kvr/util/integer_math.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <vector>

namespace {

constexpr int word_bits = 32;

int wrapping_multiply_add(int factor, int other, int addend) {
    return static_cast<int>(static_cast<unsigned>(factor) * static_cast<unsigned>(other) +
                            static_cast<unsigned>(addend));
}

int wrapping_multiply(int factor, int other) {
    return wrapping_multiply_add(factor, other, 0);
}

// The powers of an odd base modulo 2^32 are all residues that equal 1 or the base modulo the greatest power
// of two that divides base^2 - 1. This gives the largest one directly, instead of trying up to 2^30 products.
template <typename Word>
std::int64_t largest_power_of_odd(Word base) {
    const auto factor = static_cast<std::uint64_t>(static_cast<unsigned>(base));
    const int low_bits = std::min(std::countr_zero(factor * factor - 1), word_bits);
    const std::int64_t spacing = std::int64_t{1} << low_bits;
    const std::int64_t last_span = std::int64_t{std::numeric_limits<Word>::max()} + 1 - spacing;
    const auto last_congruent_to = [&](std::int64_t residue) {
        return last_span + ((residue - last_span) & (spacing - 1));
    };
    return std::max(last_congruent_to(1), last_congruent_to(std::int64_t{base}));
}

template <typename Word>
std::int64_t largest_power_of_even(Word base) {
    Word largest = 1;
    unsigned power = 1;
    for (int exponent = 1; exponent < word_bits; ++exponent) {
        power *= static_cast<unsigned>(base);
        largest = std::max(largest, static_cast<Word>(power));
    }
    return largest;
}

// Returns the largest power of the base modulo 2^32, read as a Word: a loop that waits for a greater one
// never ends.
template <typename Word>
std::int64_t largest_power(Word base) {
    return base % 2 != 0 ? largest_power_of_odd(base) : largest_power_of_even(base);
}

bool is_exact_power_of(std::int64_t base, std::int64_t value) {
    if (std::abs(base) < 2) {
        return false;
    }
    std::int64_t power = base;
    while (std::abs(power) < value) {
        power *= base;
    }
    return power == value;
}

bool has_quotient(int numerator, int denominator) {
    const bool overflows = numerator == std::numeric_limits<int>::min() && denominator == -1;
    return denominator != 0 && !overflows;
}

int smallest_power_of_two_from(int wanted) {
    constexpr int largest = 1 << (word_bits - 2);
    int power = 1;
    while (power < wanted && power < largest) {
        power *= 2;
    }
    return power;
}

int smallest_power_from(int wanted, int base) {
    if (largest_power(base) < wanted) {
        return 0;
    }
    int power = 1;
    while (power < wanted) {
        power = wrapping_multiply(power, base);
    }
    return power;
}

struct fraction {
    int numerator;
    int denominator;
};

fraction value_of_continued_fraction(const std::vector<int>& terms, int seed) {
    fraction value{seed, 1};
    for (auto term = terms.rbegin(); term != terms.rend(); ++term) {
        value =
            value.numerator == 0
                ? fraction{*term, 1}
                : fraction{wrapping_multiply_add(*term, value.numerator, value.denominator), value.numerator};
    }
    return value;
}

} // namespace

unsigned int kvr_ceil_log2(unsigned int x) {
    return kvr_ceil_log(x, 2);
}

unsigned int kvr_ceil_log(unsigned int x, unsigned int base) {
    if (x <= 1 || largest_power(base) < std::int64_t{x}) {
        return 0;
    }
    unsigned int exponent = 0;
    for (unsigned int power = 1; power < x; power *= base) {
        ++exponent;
    }
    return exponent;
}

unsigned int kvr_floor_log2(unsigned int x) {
    return kvr_ceil_log2(x);
}

unsigned int kvr_floor_log(unsigned int x, unsigned int base) {
    if (x <= 1 || largest_power(base) < std::int64_t{x}) {
        return 0;
    }
    unsigned int exponent = 0;
    unsigned int power = 1;
    while (power < x) {
        power *= base;
        if (power <= x) {
            ++exponent;
        }
    }
    return exponent;
}

int kvr_power(int base, int exponent) {
    int result = 1;
    int square = base;
    for (int remaining = exponent; remaining > 0; remaining /= 2) {
        if (remaining % 2 != 0) {
            result = wrapping_multiply(result, square);
        }
        square = wrapping_multiply(square, square);
    }
    return result;
}

bool kvr_is_power_of(int base, int value) {
    if (value < 2) {
        return value == 1;
    }
    if (base == 2) {
        return std::has_single_bit(static_cast<unsigned int>(value));
    }
    return is_exact_power_of(base, value);
}

int kvr_get_ceil_quotient_closest_to_power_of(int base, int numerator, int denominator) {
    if (!has_quotient(numerator, denominator)) {
        return 0;
    }
    const int rounded_up = numerator / denominator + (numerator % denominator >= 1 ? 1 : 0);
    if (rounded_up < 2) {
        return 1;
    }
    return base == 2 ? smallest_power_of_two_from(rounded_up) : smallest_power_from(rounded_up, base);
}

void kvr_find_simple_integer_fraction(int numerator, int denominator, int& out_numerator,
                                      int& out_denominator, int max_denominator, int max_terms) {
    const bool unlimited = max_denominator == -1;
    std::optional<fraction> best;
    std::vector<int> terms;
    int dividend = numerator;
    int divisor = denominator;
    // Euclid's remainders decrease, so a few dozen terms exhaust any fraction for any max_terms.
    for (int term_count = 1; term_count <= max_terms; ++term_count) {
        if (!has_quotient(dividend, divisor)) {
            return;
        }
        terms.push_back(dividend / divisor);
        const int remainder = dividend % divisor;
        if (remainder == 0 || !unlimited || term_count == max_terms) {
            const int seed = wrapping_multiply(2, remainder) / divisor;
            const fraction candidate = value_of_continued_fraction(terms, seed);
            const bool accepted = unlimited || candidate.denominator <= max_denominator;
            if (accepted) {
                best = candidate;
            }
            if (!accepted || remainder == 0) {
                break;
            }
        }
        dividend = divisor;
        divisor = remainder;
    }
    if (best) {
        out_numerator = best->numerator;
        out_denominator = best->denominator;
    }
}

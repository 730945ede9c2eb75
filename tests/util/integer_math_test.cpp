#include "kvr/util/integer_math.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <random>
#include <vector>

namespace {

constexpr unsigned two_to_31 = 1U << 31;
constexpr int two_to_30 = 1 << 30;

TEST(CeilLog2, RoundsUp) {
    const std::vector<unsigned> expected{0, 0, 1, 2, 2, 3, 3, 3, 3, 4};
    for (unsigned x = 0; x < expected.size(); ++x) {
        EXPECT_EQ(kvr_ceil_log2(x), expected[x]) << x;
    }
}

TEST(CeilLog2, ReachesTwoToThe31) {
    EXPECT_EQ(kvr_ceil_log2(two_to_31 - 1), 31U);
    EXPECT_EQ(kvr_ceil_log2(two_to_31), 31U);
}

TEST(CeilLog2, IsZeroBeyondTwoToThe31) {
    EXPECT_EQ(kvr_ceil_log2(two_to_31 + 1), 0U);
    EXPECT_EQ(kvr_ceil_log2(UINT_MAX), 0U);
}

TEST(FloorLog2, RoundsUpToo) {
    EXPECT_EQ(kvr_floor_log2(4), 2U);
    EXPECT_EQ(kvr_floor_log2(5), 3U);
    EXPECT_EQ(kvr_floor_log2(8), 3U);
    EXPECT_EQ(kvr_floor_log2(9), 4U);
    for (unsigned x = 0; x < 5000; ++x) {
        ASSERT_EQ(kvr_floor_log2(x), kvr_ceil_log2(x)) << x;
    }
}

TEST(CeilLog, RoundsUp) {
    EXPECT_EQ(kvr_ceil_log(10, 3), 3U);
    EXPECT_EQ(kvr_ceil_log(9, 3), 2U);
    EXPECT_EQ(kvr_ceil_log(1000000000, 10), 9U);
    EXPECT_EQ(kvr_ceil_log(0, 10), 0U);
    EXPECT_EQ(kvr_ceil_log(1, 10), 0U);
    EXPECT_EQ(kvr_ceil_log(2, UINT_MAX), 1U);
}

TEST(FloorLog, RoundsDown) {
    EXPECT_EQ(kvr_floor_log(10, 3), 2U);
    EXPECT_EQ(kvr_floor_log(8, 2), 3U);
    EXPECT_EQ(kvr_floor_log(9, 2), 3U);
    EXPECT_EQ(kvr_floor_log(26, 3), 2U);
    EXPECT_EQ(kvr_floor_log(27, 3), 3U);
    EXPECT_EQ(kvr_floor_log(0, 10), 0U);
    EXPECT_EQ(kvr_floor_log(1, 10), 0U);
    EXPECT_EQ(kvr_floor_log(2, UINT_MAX), 0U);
}

TEST(IntegerLogarithms, AreExactBelowTheWrap) {
    for (unsigned base = 2; base <= 40; ++base) {
        unsigned floor = 0;
        std::uint64_t next_power = base;
        for (unsigned x = 2; x <= 5000; ++x) {
            if (x == next_power) {
                ++floor;
                next_power *= base;
            }
            const bool is_power = std::uint64_t{x} * base == next_power;
            ASSERT_EQ(kvr_floor_log(x, base), floor) << x << " to base " << base;
            ASSERT_EQ(kvr_ceil_log(x, base), is_power ? floor : floor + 1) << x << " to base " << base;
        }
    }
}

TEST(IntegerLogarithms, OfBaseZeroOrOneAreZero) {
    for (const unsigned base : {0U, 1U}) {
        for (const unsigned x : {0U, 1U, 2U, 1000U, UINT_MAX}) {
            EXPECT_EQ(kvr_ceil_log(x, base), 0U);
            EXPECT_EQ(kvr_floor_log(x, base), 0U);
        }
    }
}

// Powers of 10 above 10^9 wrap: 1410065408, 1215752192, 3567587328.
TEST(IntegerLogarithms, CountProductsThatWrapOnTheWay) {
    EXPECT_EQ(kvr_ceil_log(3500000000, 10), 12U);
    EXPECT_EQ(kvr_floor_log(3500000000, 10), 11U);
    EXPECT_EQ(kvr_floor_log(3567587328, 10), 12U);
}

TEST(IntegerLogarithms, AreZeroWhenNoWrappedProductIsLargeEnough) {
    EXPECT_EQ(kvr_ceil_log(UINT_MAX, 2), 0U);
    EXPECT_EQ(kvr_ceil_log(UINT_MAX, 3), 0U);
    EXPECT_EQ(kvr_ceil_log(UINT_MAX, 10), 0U);
    EXPECT_EQ(kvr_floor_log(UINT_MAX, 3), 0U);
    EXPECT_EQ(kvr_floor_log(UINT_MAX, 65536), 0U);
}

struct logarithms {
    unsigned ceiling;
    unsigned floor;
};

// Computes the products one by one. A cycle passes through 0 or 1; 32 bits keep cycles short.
logarithms logarithms_by_trial(unsigned x, unsigned base) {
    logarithms result{0, 0};
    unsigned product = 1;
    while (product < x) {
        product *= base;
        if (product <= 1) {
            return {0, 0};
        }
        ++result.ceiling;
        result.floor += product <= x ? 1 : 0;
    }
    return result;
}

TEST(IntegerLogarithms, AgreeWithTrialAroundTheLargestWrappedPower) {
    // These bases have at most 2^16 powers modulo 2^32.
    for (const unsigned base : {65535U, 65537U, 131071U, 196609U, two_to_31 - 1, two_to_31 + 1, UINT_MAX,
                                0xFFFEFFFFU, 6U, 12U, 65536U, 0x80000000U}) {
        unsigned largest = 1;
        for (unsigned power = base; power > 1; power *= base) {
            largest = power > largest ? power : largest;
        }
        for (const unsigned x : {largest - 1, largest, largest + 1, UINT_MAX, two_to_31, two_to_31 + 1}) {
            const logarithms expected = logarithms_by_trial(x, base);
            EXPECT_EQ(kvr_ceil_log(x, base), expected.ceiling) << x << " to base " << base;
            EXPECT_EQ(kvr_floor_log(x, base), expected.floor) << x << " to base " << base;
        }
    }
}

TEST(IntegerLogarithms, AgreeWithTrialOnRandomArguments) {
    std::mt19937 random(77);
    for (int round = 0; round < 20000; ++round) {
        const unsigned x = static_cast<unsigned>(random()) >> random() % 32;
        const unsigned base = static_cast<unsigned>(random()) >> random() % 32;
        if (x > UINT_MAX - (1U << 16)) {
            continue;
        }
        const logarithms expected = x > 1 ? logarithms_by_trial(x, base) : logarithms{0, 0};
        ASSERT_EQ(kvr_ceil_log(x, base), expected.ceiling) << x << " to base " << base;
        ASSERT_EQ(kvr_floor_log(x, base), expected.floor) << x << " to base " << base;
    }
}

TEST(Power, OfAnExponentBelowOneIsOne) {
    EXPECT_EQ(kvr_power(7, 0), 1);
    EXPECT_EQ(kvr_power(7, -3), 1);
    EXPECT_EQ(kvr_power(0, 0), 1);
    EXPECT_EQ(kvr_power(7, INT_MIN), 1);
}

TEST(Power, MultipliesTheBase) {
    EXPECT_EQ(kvr_power(7, 1), 7);
    EXPECT_EQ(kvr_power(10, 9), 1000000000);
    EXPECT_EQ(kvr_power(-3, 3), -27);
    EXPECT_EQ(kvr_power(0, 5), 0);
}

TEST(Power, WrapsModuloTwoToThe32) {
    EXPECT_EQ(kvr_power(2, 31), INT_MIN);
    EXPECT_EQ(kvr_power(2, 32), 0);
    EXPECT_EQ(kvr_power(3, 20), -808182895);
    EXPECT_EQ(kvr_power(10, 10), 1410065408);
    EXPECT_EQ(kvr_power(INT_MAX, INT_MAX), INT_MAX);
    EXPECT_EQ(kvr_power(-1, INT_MAX), -1);
    EXPECT_EQ(kvr_power(INT_MIN, 2), 0);
}

TEST(Power, AgreesWithRepeatedMultiplication) {
    for (int base = -40; base <= 40; ++base) {
        unsigned expected = 1;
        for (int exponent = 0; exponent <= 100; ++exponent) {
            ASSERT_EQ(kvr_power(base, exponent), static_cast<int>(expected)) << base << '^' << exponent;
            expected *= static_cast<unsigned>(base);
        }
    }
}

TEST(IsPowerOf, KnowsPowersAndOthers) {
    EXPECT_TRUE(kvr_is_power_of(2, 64));
    EXPECT_FALSE(kvr_is_power_of(2, 96));
    EXPECT_TRUE(kvr_is_power_of(3, 81));
    EXPECT_TRUE(kvr_is_power_of(3, 1));
    EXPECT_FALSE(kvr_is_power_of(5, 0));
    EXPECT_FALSE(kvr_is_power_of(10, 5));
}

TEST(IsPowerOf, OneIsAPowerOfEveryBase) {
    for (const int base : {INT_MIN, -1, 0, 1, 2, 3, INT_MAX}) {
        EXPECT_TRUE(kvr_is_power_of(base, 1)) << base;
    }
}

TEST(IsPowerOf, NothingBelowOneIsAPower) {
    for (const int base : {INT_MIN, -2, 0, 1, 2, 3}) {
        EXPECT_FALSE(kvr_is_power_of(base, 0)) << base;
        EXPECT_FALSE(kvr_is_power_of(base, -8)) << base;
        EXPECT_FALSE(kvr_is_power_of(base, INT_MIN)) << base;
    }
}

TEST(IsPowerOf, EndsForBasesThatDoNotGrow) {
    for (const int base : {-1, 0, 1}) {
        EXPECT_FALSE(kvr_is_power_of(base, 2)) << base;
        EXPECT_FALSE(kvr_is_power_of(base, INT_MAX)) << base;
    }
}

TEST(IsPowerOf, AgreesWithExactPowersForSmallBases) {
    for (int base = 0; base <= 40; ++base) {
        std::vector<bool> is_power(5001);
        is_power[1] = true;
        for (std::size_t power = static_cast<unsigned>(base); base > 1 && power < is_power.size();
             power *= static_cast<unsigned>(base)) {
            is_power[power] = true;
        }
        for (int value = 0; value <= 5000; ++value) {
            ASSERT_EQ(kvr_is_power_of(base, value), is_power[static_cast<std::size_t>(value)])
                << value << " of " << base;
        }
    }
}

TEST(IsPowerOf, KnowsEveryPowerThatAnIntHolds) {
    for (int base = 2; base <= 50000; base = base < 100 ? base + 1 : base * 3 + 1) {
        for (std::int64_t power = base; power <= INT_MAX; power *= base) {
            EXPECT_TRUE(kvr_is_power_of(base, static_cast<int>(power))) << power << " of " << base;
        }
    }
    EXPECT_TRUE(kvr_is_power_of(INT_MAX, INT_MAX));
}

TEST(IsPowerOf, RefusesTheNeighborsOfThePowersOfTwo) {
    for (const int value : {3, 5, 127, 129, two_to_30 - 1, two_to_30 + 1, INT_MAX}) {
        EXPECT_FALSE(kvr_is_power_of(2, value)) << value;
        EXPECT_FALSE(kvr_is_power_of(4, value)) << value;
    }
}

TEST(IsPowerOf, EndsAtTheLargestInt) {
    for (int base = 3; base <= 40; ++base) {
        EXPECT_FALSE(kvr_is_power_of(base, INT_MAX)) << base;
    }
}

TEST(IsPowerOf, FollowsTheSignsOfANegativeBase) {
    EXPECT_TRUE(kvr_is_power_of(-3, 9));
    EXPECT_FALSE(kvr_is_power_of(-3, 27));
    EXPECT_TRUE(kvr_is_power_of(-2, two_to_30));
    EXPECT_FALSE(kvr_is_power_of(INT_MIN, INT_MAX));
}

TEST(IsPowerOf, RefusesWhatOnlyAWrappedProductIs) {
    ASSERT_EQ(kvr_power(3, 21), 1870418611);
    EXPECT_FALSE(kvr_is_power_of(3, 1870418611));
    ASSERT_EQ(kvr_power(-7, 13), 1895237401);
    EXPECT_FALSE(kvr_is_power_of(-7, 1895237401));
}

TEST(IsPowerOf, KnowsThePowerWhoseNextProductWouldWrap) {
    EXPECT_TRUE(kvr_is_power_of(3, 1162261467)); // 3^19
    EXPECT_TRUE(kvr_is_power_of(1291, 1666681));
    EXPECT_TRUE(kvr_is_power_of(46340, 2147395600));
    EXPECT_TRUE(kvr_is_power_of(-46340, 2147395600));
    EXPECT_FALSE(kvr_is_power_of(46341, 2147395600));
    EXPECT_TRUE(kvr_is_power_of(INT_MIN, 1));
}

TEST(CeilQuotientPower, RoundsTheQuotientUpToAPower) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, 9, 2), 8);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(4, 9, 2), 16);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, 1, 4), 1);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(3, 18, 2), 9);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(3, 19, 2), 27);
}

TEST(CeilQuotientPower, IsCappedForBaseTwo) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, two_to_30, 1), 1073741824);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, two_to_30 + 1, 1), 1073741824);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, INT_MAX, 1), 1073741824);
}

TEST(CeilQuotientPower, IsOneForQuotientsBelowTwo) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(10, 0, 7), 1);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(10, 7, 7), 1);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(10, -70, 7), 1);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(0, 1, 1), 1);
}

TEST(CeilQuotientPower, OnlyAPositiveRemainderRoundsUp) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(5, -11, -2), 5);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(5, -10, -2), 5);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(5, -12, -2), 25);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(5, 11, 2), 25);
}

TEST(CeilQuotientPower, IsZeroWithoutAQuotient) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, 1, 0), 0);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(3, 0, 0), 0);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, INT_MIN, -1), 0);
}

TEST(CeilQuotientPower, IsZeroForBasesThatDoNotGrow) {
    for (const int base : {-1, 0, 1}) {
        EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(base, 9, 2), 0) << base;
    }
}

TEST(CeilQuotientPower, IsZeroWhenNoWrappedPowerIsLargeEnough) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(3, INT_MAX, 1), 0);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(4, two_to_30 + 1, 1), 0);
}

TEST(CeilQuotientPower, MayBeAWrappedPower) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(3, 1162261468, 1), 1870418611);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(10, 1000000001, 1), 1410065408);
}

TEST(CeilQuotientPower, FollowsTheSignsOfANegativeBase) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(-2, 5, 1), 16);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(-3, 2, 1), 9);
}

TEST(CeilQuotientPower, AgreesWithExactArithmetic) {
    for (int base = 2; base <= 12; ++base) {
        for (int numerator = 0; numerator <= 300; ++numerator) {
            for (int denominator = 1; denominator <= 20; ++denominator) {
                int power = 1;
                while (power * denominator < numerator) {
                    power *= base;
                }
                ASSERT_EQ(kvr_get_ceil_quotient_closest_to_power_of(base, numerator, denominator), power)
                    << base << ": " << numerator << '/' << denominator;
            }
        }
    }
}

struct fraction {
    int numerator;
    int denominator;

    bool operator==(const fraction& other) const {
        return numerator == other.numerator && denominator == other.denominator;
    }
};

void PrintTo(const fraction& value, std::ostream* out) {
    *out << value.numerator << '/' << value.denominator;
}

constexpr fraction untouched_fraction{-77, -78};

fraction find(int numerator, int denominator, int max_denominator, int max_terms) {
    fraction found = untouched_fraction;
    kvr_find_simple_integer_fraction(numerator, denominator, found.numerator, found.denominator,
                                     max_denominator, max_terms);
    return found;
}

TEST(SimpleFraction, IsExactWhenTheTermsSuffice) {
    EXPECT_EQ(find(3, 4, -1, 10), (fraction{3, 4}));
    EXPECT_EQ(find(6, 8, -1, 10), (fraction{3, 4}));
    EXPECT_EQ(find(355, 113, -1, 10), (fraction{355, 113}));
    EXPECT_EQ(find(12, 4, -1, 1), (fraction{3, 1}));
    EXPECT_EQ(find(0, 4, -1, 1), (fraction{0, 1}));
}

TEST(SimpleFraction, IsTheLastCandidateWhoseDenominatorFits) {
    EXPECT_EQ(find(355, 113, 10, 10), (fraction{22, 7}));
    EXPECT_EQ(find(355, 113, 7, 10), (fraction{22, 7}));
    EXPECT_EQ(find(355, 113, 6, 10), (fraction{3, 1}));
    EXPECT_EQ(find(355, 113, 113, 10), (fraction{355, 113}));
}

TEST(SimpleFraction, RoundsTheLastTerm) {
    EXPECT_EQ(find(314159, 100000, -1, 3), (fraction{355, 113}));
    EXPECT_EQ(find(7, 4, -1, 1), (fraction{2, 1}));
    EXPECT_EQ(find(5, 4, -1, 1), (fraction{1, 1}));
    EXPECT_EQ(find(3, 2, -1, 1), (fraction{2, 1}));
}

TEST(SimpleFraction, IsLeftAloneWithoutTerms) {
    EXPECT_EQ(find(3, 4, -1, 0), untouched_fraction);
    EXPECT_EQ(find(3, 4, -1, INT_MIN), untouched_fraction);
}

TEST(SimpleFraction, IsLeftAloneWhenNoDenominatorFits) {
    EXPECT_EQ(find(3, 4, 0, 10), untouched_fraction);
    EXPECT_EQ(find(3, 4, -2, 10), untouched_fraction);
}

TEST(SimpleFraction, IsLeftAloneWithoutAQuotient) {
    EXPECT_EQ(find(3, 0, -1, 10), untouched_fraction);
    EXPECT_EQ(find(INT_MIN, -1, -1, 10), untouched_fraction);
    // The second division is -2^31 / -1.
    EXPECT_EQ(find(-1, INT_MIN, -1, 10), untouched_fraction);
    EXPECT_EQ(find(-1, INT_MIN, 5, 10), untouched_fraction);
}

TEST(SimpleFraction, TakesAnyNumberOfTerms) {
    EXPECT_EQ(find(355, 113, -1, INT_MAX), (fraction{355, 113}));
}

TEST(SimpleFraction, FollowsTruncatingDivisionOfNegativeArguments) {
    EXPECT_EQ(find(-3, 4, -1, 10), (fraction{-3, 4}));
    EXPECT_EQ(find(3, -4, -1, 10), (fraction{-3, 4}));
    EXPECT_EQ(find(-7, 4, -1, 1), (fraction{2, -1}));
}

// The doubled remainder wraps to a negative number, so that the term is not rounded up.
TEST(SimpleFraction, RoundingWrapsForLargeRemainders) {
    EXPECT_EQ(find(1500000000, 2000000000, -1, 1), (fraction{0, 1}));
    EXPECT_EQ(find(1100000000, 1200000000, -1, 1), (fraction{1, -1}));
}

std::int32_t wrap(std::int64_t value) {
    return static_cast<std::int32_t>(value);
}

// A second implementation of the search, with wide numbers that wrap at each step.
fraction find_step_by_step(int numerator, int denominator, int max_denominator, int max_terms) {
    fraction found = untouched_fraction;
    std::vector<std::int64_t> term(static_cast<std::size_t>(max_terms));
    std::int64_t a = numerator;
    std::int64_t b = denominator;
    std::size_t limit = term.size();
    for (std::size_t i = 0; i < limit;) {
        ++i;
        const std::int64_t q = a / b;
        term[i - 1] = q;
        const std::int64_t r = a - q * b;
        if (r == 0 || max_denominator != -1 || i == limit) {
            std::int64_t s = wrap(2 * r) / b;
            std::int64_t t = 1;
            for (std::size_t k = i; k > 0; --k) {
                const std::int64_t old_s = s;
                s = old_s != 0 ? wrap(term[k - 1] * old_s + t) : term[k - 1];
                t = old_s != 0 ? old_s : 1;
            }
            const bool accepted = t <= max_denominator || max_denominator == -1;
            if (accepted) {
                found = {wrap(s), wrap(t)};
            }
            if (!(accepted && r != 0)) {
                limit = i;
            }
        }
        a = b;
        b = r;
    }
    return found;
}

TEST(SimpleFraction, AgreesWithAStepByStepSearchOfSmallFractions) {
    for (int numerator = -30; numerator <= 60; ++numerator) {
        for (int denominator = -20; denominator <= 40; ++denominator) {
            for (int max_denominator = -2; denominator != 0 && max_denominator <= 12; ++max_denominator) {
                for (int max_terms = 1; max_terms <= 5; ++max_terms) {
                    ASSERT_EQ(find(numerator, denominator, max_denominator, max_terms),
                              find_step_by_step(numerator, denominator, max_denominator, max_terms))
                        << numerator << '/' << denominator << ", " << max_denominator << ", " << max_terms;
                }
            }
        }
    }
}

TEST(SimpleFraction, AgreesWithAStepByStepSearchOfRandomFractions) {
    std::mt19937 random(4711);
    const auto any_int = [&] { return static_cast<int>(random()) >> random() % 32; };
    for (int round = 0; round < 100000; ++round) {
        const int numerator = any_int();
        const int denominator = any_int();
        const int max_denominator = random() % 3 == 0 ? -1 : any_int();
        const int max_terms = 1 + static_cast<int>(random() % 60);
        if (denominator != 0 && numerator != INT_MIN && denominator != INT_MIN) {
            ASSERT_EQ(find(numerator, denominator, max_denominator, max_terms),
                      find_step_by_step(numerator, denominator, max_denominator, max_terms))
                << numerator << '/' << denominator << ", " << max_denominator << ", " << max_terms;
        }
    }
}

TEST(CeilQuotientPower, SmallestIntegerHasAQuotientButByMinusOne) {
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, INT_MIN, -2), 1 << 30);
    EXPECT_EQ(kvr_get_ceil_quotient_closest_to_power_of(2, INT_MIN, 2), 1);
}

} // namespace

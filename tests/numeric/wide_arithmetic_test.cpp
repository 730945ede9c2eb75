#include "kvr/numeric/wide_arithmetic.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr std::uint64_t all_ones = std::numeric_limits<std::uint64_t>::max();

/// The numbers at which carries and corrections change, and random numbers.
std::vector<std::uint64_t> critical_limbs() {
    std::vector<std::uint64_t> numbers = {0,
                                          1,
                                          2,
                                          0xFFFFFFFE,
                                          0xFFFFFFFF,
                                          0x100000000,
                                          0x100000001,
                                          kvr::decimal_chunk - 1,
                                          kvr::decimal_chunk,
                                          kvr::decimal_chunk + 1,
                                          0x8000000000000000,
                                          all_ones - 1,
                                          all_ones};
    std::mt19937_64 random(20);
    for (int count = 0; count < 100; ++count) {
        numbers.push_back(random());
        numbers.push_back(random() >> (random() % 64));
    }
    return numbers;
}

} // namespace

TEST(WideArithmetic, LargestProductIsWhole) {
    const kvr::wide_limb expected = {1, all_ones - 1};
    EXPECT_EQ(kvr::multiply(all_ones, all_ones), expected);
    EXPECT_EQ(kvr::multiply_by_halves(all_ones, all_ones), expected);
}

TEST(WideArithmetic, ProductByHalvesIsTheProduct) {
    const std::vector<std::uint64_t> numbers = critical_limbs();
    for (const std::uint64_t left : numbers) {
        for (const std::uint64_t right : numbers) {
            ASSERT_EQ(kvr::multiply_by_halves(left, right), kvr::multiply(left, right))
                << left << " * " << right;
            ASSERT_EQ(kvr::multiply(left, right).low, left * right);
        }
    }
}

TEST(WideArithmetic, AddendCarriesIntoTheHighLimb) {
    EXPECT_EQ(kvr::multiply_add(all_ones, all_ones, all_ones), (kvr::wide_limb{0, all_ones}));
    EXPECT_EQ(kvr::multiply_add(2, 3, 4), (kvr::wide_limb{10, 0}));
}

TEST(WideArithmetic, ColumnSumsAreTheSameInBothWays) {
    const std::vector<std::uint64_t> numbers = critical_limbs();
    kvr::column_sum sum;
    kvr::column_sum_by_limbs sum_by_limbs;
    for (const std::uint64_t left : numbers) {
        for (const std::uint64_t right : numbers) {
            sum.add_product(left, right);
            sum_by_limbs.add_product(left, right);
        }
        ASSERT_EQ(sum.take_limb(), sum_by_limbs.take_limb());
    }
}

TEST(WideArithmetic, ColumnSumCarriesIntoTheThirdLimb) {
    kvr::column_sum_by_limbs sum;
    sum.add_product(all_ones, all_ones);
    sum.add_product(all_ones, all_ones);
    EXPECT_EQ(sum.take_limb(), 2U);
    EXPECT_EQ(sum.take_limb(), all_ones - 3);
    EXPECT_EQ(sum.take_limb(), 1U);
}

TEST(WideArithmetic, QuotientAndRemainderMakeTheDividend) {
    const std::vector<std::uint64_t> numbers = critical_limbs();
    for (const std::uint64_t limb : numbers) {
        const std::uint64_t high = limb % kvr::decimal_chunk;
        for (const std::uint64_t low : numbers) {
            const kvr::chunk_division division = kvr::divide_by_decimal_chunk(high, low);
            ASSERT_LT(division.remainder, kvr::decimal_chunk) << high << " " << low;
            ASSERT_EQ(kvr::multiply_add(division.quotient, kvr::decimal_chunk, division.remainder),
                      (kvr::wide_limb{low, high}))
                << high << " " << low;
        }
    }
}

TEST(WideArithmetic, DividendsNextToAMultipleOfTheDivisorAreDividedExactly) {
    for (const std::uint64_t quotient : critical_limbs()) {
        const kvr::wide_limb exact = kvr::multiply(quotient, kvr::decimal_chunk);
        const kvr::wide_limb largest =
            kvr::multiply_add(quotient, kvr::decimal_chunk, kvr::decimal_chunk - 1);
        const kvr::chunk_division first = kvr::divide_by_decimal_chunk(exact.high, exact.low);
        const kvr::chunk_division last = kvr::divide_by_decimal_chunk(largest.high, largest.low);
        EXPECT_EQ(first.quotient, quotient);
        EXPECT_EQ(first.remainder, 0U);
        EXPECT_EQ(last.quotient, quotient);
        EXPECT_EQ(last.remainder, kvr::decimal_chunk - 1);
    }
}

TEST(WideArithmetic, QuotientEstimatedTooSmallIsCorrected) {
    const kvr::chunk_division exact =
        kvr::divide_by_decimal_chunk(9999999569293630529U, 18125795862641115136U);
    EXPECT_EQ(exact.quotient, 18446743279196534763U);
    EXPECT_EQ(exact.remainder, 0U);
    const kvr::chunk_division inexact =
        kvr::divide_by_decimal_chunk(9999999999999999780U, 18446744073709551297U);
    EXPECT_EQ(inexact.quotient, 18446744073709551212U);
    EXPECT_EQ(inexact.remainder, 163047857608195777U);
}

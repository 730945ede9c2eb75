#include "kvr/numeric/limb_arithmetic.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using limbs = std::vector<std::uint64_t>;

constexpr std::uint64_t ones_of_a_limb = ~std::uint64_t{0};

/// Random limbs, or long runs of ones and zeros, which propagate carries far.
limbs carrying_number(std::mt19937_64& random, std::size_t size) {
    limbs number(size);
    const bool has_runs = random() % 2 == 0;
    std::uint64_t run = 0;
    for (std::uint64_t& limb : number) {
        run = random() % 8 == 0 ? ~run : run;
        limb = has_runs ? run : random();
    }
    return number;
}

limbs plain_product(const limbs& left, const limbs& right) {
    limbs product(left.size() + right.size());
    for (std::size_t index = 0; index < right.size(); ++index) {
        limbs row = left;
        const std::uint64_t carry = kvr::multiply_by_limb(row, right[index]);
        row.push_back(carry);
        kvr::add_limbs(kvr::limb_span(product).subspan(index), row);
    }
    return product;
}

} // namespace

TEST(LimbArithmetic, CarryRunsThroughAllLimbs) {
    limbs number(5, ones_of_a_limb);
    EXPECT_EQ(kvr::add_limbs(number, limbs{1}), 1U);
    EXPECT_EQ(number, limbs(5, 0));
    EXPECT_EQ(kvr::subtract_limbs(number, limbs{1}), 1U);
    EXPECT_EQ(number, limbs(5, ones_of_a_limb));
    EXPECT_EQ(kvr::add_limbs(number, limbs{1, ones_of_a_limb}), 1U);
    EXPECT_EQ(number, (limbs{0, ones_of_a_limb, 0, 0, 0}));
}

TEST(LimbArithmetic, SumAndDifferenceUndoEachOther) {
    std::mt19937_64 random(51);
    for (int count = 0; count < 2000; ++count) {
        const limbs left = carrying_number(random, 1 + random() % 12);
        const limbs right = carrying_number(random, random() % (left.size() + 1));
        limbs sum = left;
        const std::uint64_t carry = kvr::add_limbs(sum, right);
        ASSERT_EQ(carry != 0, kvr::is_less(sum, left) || (carry != 0 && sum == left));
        ASSERT_EQ(kvr::subtract_limbs(sum, right), carry);
        ASSERT_EQ(sum, left);
    }
}

TEST(LimbArithmetic, NegationIsTheDifferenceFromZero) {
    std::mt19937_64 random(52);
    for (int count = 0; count < 500; ++count) {
        const limbs number = carrying_number(random, 1 + random() % 6);
        limbs negated = number;
        kvr::negate_limbs(negated);
        limbs difference(number.size());
        kvr::subtract_limbs(difference, number);
        ASSERT_EQ(negated, difference);
    }
}

TEST(LimbArithmetic, LeadingZerosDoNotMakeANumberLarger) {
    EXPECT_TRUE(kvr::is_less(limbs{1, 0, 0}, limbs{2}));
    EXPECT_FALSE(kvr::is_less(limbs{2}, limbs{2, 0}));
    EXPECT_FALSE(kvr::is_less(limbs{0, 1}, limbs{ones_of_a_limb}));
    EXPECT_FALSE(kvr::is_less(limbs{}, limbs{0}));
}

TEST(LimbArithmetic, ProductsOfAllLengthsAreThoseOfThePlainRows) {
    std::mt19937_64 random(53);
    for (const std::size_t left_size : {1U, 2U, 17U, 43U, 44U, 45U, 46U, 87U, 88U, 91U, 178U, 400U}) {
        for (const std::size_t right_size : {1U, 3U, 43U, 44U, 45U, 89U, 100U, 177U}) {
            for (int count = 0; count < 6; ++count) {
                const limbs left = carrying_number(random, left_size);
                const limbs right = carrying_number(random, right_size);
                limbs product(left_size + right_size, 7);
                kvr::multiply_limbs(product, left, right);
                ASSERT_EQ(product, plain_product(left, right)) << left_size << " " << right_size;
            }
        }
    }
}

TEST(LimbArithmetic, ColumnsFromTheFirstOneOnAreTheProduct) {
    std::mt19937_64 random(54);
    for (int count = 0; count < 500; ++count) {
        const limbs left = carrying_number(random, 1 + random() % 10);
        const limbs right = carrying_number(random, 1 + random() % 10);
        limbs columns(1 + random() % (left.size() + right.size()));
        kvr::multiply_columns(columns, left, right);
        limbs expected = plain_product(left, right);
        expected.resize(columns.size());
        ASSERT_EQ(columns, expected);
    }
}

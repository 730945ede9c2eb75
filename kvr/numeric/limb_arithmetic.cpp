#include "kvr/numeric/limb_arithmetic.h"

#include "kvr/numeric/wide_arithmetic.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>
#include <vector>

namespace kvr {

namespace {

/// From this number of limbs on, three products of half the length are faster than one of the whole length.
constexpr std::size_t karatsuba_limbs = 44;

/// distance = |left - right|. Returns left < right. Precondition: left has the length of distance and is not
/// shorter than right.
bool set_distance(limb_span distance, limb_view left, limb_view right) {
    const bool is_negative = is_less(left, right);
    if (!is_negative) {
        std::ranges::copy(left, distance.begin());
        subtract_limbs(distance, right);
        return false;
    }
    // In this case, the limbs that only left has are 0.
    std::ranges::fill(distance.subspan(right.size()), 0);
    std::ranges::copy(right, distance.begin());
    subtract_limbs(distance, left.first(right.size()));
    return true;
}

/// Returns the scratch limbs of multiply_by_karatsuba(), in addition to the product: twice the longer half on
/// each level, and as much again on the last level. Each of less than 60 levels rounds up by a limb at most.
std::size_t scratch_size(std::size_t size) {
    return 2 * size + 128;
}

/// product = left * right for two numbers of equal length. With left = l1 * B + l0 and right = r1 * B + r0,
/// l1 * r0 + l0 * r1 is l0 * r0 + l1 * r1 - (l0 - l1) * (r0 - r1).
void multiply_by_karatsuba(limb_span product, limb_view left, limb_view right, limb_span scratch) {
    const std::size_t size = left.size();
    if (size < karatsuba_limbs) {
        multiply_columns(product, left, right);
        return;
    }
    const std::size_t half = (size + 1) / 2;
    const limb_span low = product.first(2 * half);
    const limb_span high = product.subspan(2 * half);
    const bool is_left_less = set_distance(low.first(half), left.first(half), left.subspan(half));
    const bool is_right_less = set_distance(low.subspan(half), right.first(half), right.subspan(half));
    const limb_span cross = scratch.first(2 * half);
    multiply_by_karatsuba(cross, low.first(half), low.subspan(half), scratch.subspan(2 * half));
    multiply_by_karatsuba(low, left.first(half), right.first(half), scratch.subspan(2 * half));
    multiply_by_karatsuba(high, left.subspan(half), right.subspan(half), scratch.subspan(2 * half));

    const limb_span middle = scratch.subspan(2 * half, 2 * half);
    std::ranges::copy(low, middle.begin());
    std::uint64_t carry = add_limbs(middle, high);
    if (is_left_less == is_right_less) {
        carry -= subtract_limbs(middle, cross);
    } else {
        carry += add_limbs(middle, cross);
    }
    const limb_span upper = product.subspan(half);
    carry += add_limbs(upper.first(2 * half), middle);
    add_limbs(upper.subspan(2 * half), limb_view(&carry, 1));
}

/// product = left * right. right is the shorter one and long enough for Karatsuba multiplication. left is cut
/// into pieces of the length of right.
void multiply_in_pieces(limb_span product, limb_view left, limb_view right) {
    const std::size_t size = right.size();
    std::vector<std::uint64_t> scratch(scratch_size(size) + 2 * size);
    const limb_span piece_product = limb_span(scratch).first(2 * size);
    const limb_span rest = limb_span(scratch).subspan(2 * size);
    std::ranges::fill(product, 0);
    while (left.size() >= size) {
        multiply_by_karatsuba(piece_product, left.first(size), right, rest);
        add_limbs(product, piece_product);
        left = left.subspan(size);
        product = product.subspan(size);
    }
    if (!left.empty()) {
        std::vector<std::uint64_t> last(left.size() + size);
        multiply_limbs(last, left, right);
        add_limbs(product, last);
    }
}

} // namespace

limb_view without_leading_zeros(limb_view number) {
    while (!number.empty() && number.back() == 0) {
        number = number.first(number.size() - 1);
    }
    return number;
}

std::uint64_t add_limbs(limb_span sum, limb_view addend) {
    assert(addend.size() <= sum.size());
    std::uint64_t carry = 0;
    std::size_t index = 0;
    for (const std::uint64_t limb : addend) {
        const std::uint64_t partial = sum[index] + carry;
        carry = partial < carry ? 1 : 0;
        sum[index] = partial + limb;
        carry += sum[index] < limb ? 1U : 0U;
        ++index;
    }
    for (; carry != 0 && index < sum.size(); ++index) {
        carry = ++sum[index] == 0 ? 1 : 0;
    }
    return carry;
}

std::uint64_t subtract_limbs(limb_span difference, limb_view subtrahend) {
    assert(subtrahend.size() <= difference.size());
    std::uint64_t borrow = 0;
    std::size_t index = 0;
    for (const std::uint64_t limb : subtrahend) {
        const std::uint64_t before = difference[index];
        const std::uint64_t partial = before - limb;
        difference[index] = partial - borrow;
        borrow = (before < limb ? 1U : 0U) + (partial < borrow ? 1U : 0U);
        ++index;
    }
    for (; borrow != 0 && index < difference.size(); ++index) {
        borrow = difference[index]-- == 0 ? 1 : 0;
    }
    return borrow;
}

void negate_limbs(limb_span number) {
    std::uint64_t carry = 1;
    for (std::uint64_t& limb : number) {
        limb = ~limb + carry;
        carry = carry != 0 && limb == 0 ? 1 : 0;
    }
}

bool is_less(limb_view left, limb_view right) {
    left = without_leading_zeros(left);
    right = without_leading_zeros(right);
    if (left.size() != right.size()) {
        return left.size() < right.size();
    }
    for (std::size_t index = left.size(); index-- > 0;) {
        if (left[index] != right[index]) {
            return left[index] < right[index];
        }
    }
    return false;
}

std::uint64_t multiply_by_limb(limb_span number, std::uint64_t factor, std::uint64_t carry) {
    for (std::uint64_t& limb : number) {
        const wide_limb sum = multiply_add(limb, factor, carry);
        limb = sum.low;
        carry = sum.high;
    }
    return carry;
}

void multiply_columns(limb_span columns, limb_view left, limb_view right, std::size_t first) {
    column_sum sum;
    std::size_t column = first;
    for (std::uint64_t& limb : columns) {
        const std::size_t begin = column < right.size() ? 0 : column - right.size() + 1;
        const std::size_t end = std::min(column + 1, left.size());
        // Pointers, since a loop with two indexes takes a third more time.
        const std::uint64_t* other = right.data() + (column - begin);
        for (const std::uint64_t* place = left.data() + begin; place < left.data() + end; ++place) {
            sum.add_product(*place, *other--);
        }
        limb = sum.take_limb();
        ++column;
    }
}

void multiply_limbs(limb_span product, limb_view left, limb_view right) {
    if (left.size() < right.size()) {
        std::swap(left, right);
    }
    if (right.size() < karatsuba_limbs) {
        multiply_columns(product, left, right);
    } else {
        multiply_in_pieces(product, left, right);
    }
}

} // namespace kvr

#include "kvr/numeric/magnitude.h"

#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/wide_arithmetic.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <limits>

namespace kvr {

namespace {

constexpr unsigned limb_bits = std::numeric_limits<std::uint64_t>::digits;

// What divide_by_decimal_chunk() relies on: with the divisor d and the reciprocal v,
// (2^64 + v) * d stays below 2^128, and one d more does not.
static_assert(std::countl_zero(decimal_chunk) == 0);
static_assert(multiply(decimal_chunk_reciprocal, decimal_chunk).high < 0 - decimal_chunk);
static_assert(multiply_add(decimal_chunk_reciprocal, decimal_chunk, decimal_chunk).high == 0 - decimal_chunk);

std::size_t limbs_for_bits(std::size_t count) {
    return digit_count(count, limb_bits);
}

/// The lowest @p count bits set. Precondition: count < limb_bits.
std::uint64_t low_mask(std::size_t count) {
    return (std::uint64_t{1} << count) - 1;
}

/// Precondition: at most decimal_chunk_digits decimal digits.
std::uint64_t chunk_value(std::string_view digits) {
    std::uint64_t value = 0;
    for (const char digit : digits) {
        value = value * 10 + static_cast<unsigned char>(digit - '0');
    }
    return value;
}

/// number = number * 10^19 + chunk, where the first @p size limbs hold the number; returns the new size.
std::size_t append_chunk(std::span<std::uint64_t> number, std::size_t size, std::uint64_t chunk) {
    std::uint64_t carry = chunk;
    for (std::uint64_t& limb : number.first(size)) {
        const wide_limb sum = multiply_add(limb, decimal_chunk, carry);
        limb = sum.low;
        carry = sum.high;
    }
    if (carry == 0) {
        return size;
    }
    number[size] = carry;
    return size + 1;
}

/// The chunks that one sweep over a number splits off. Their divisions overlap in the processor, where a
/// single one would wait for its own last remainder all the time.
constexpr std::size_t chunks_per_sweep = 4;

/// Divides the number chunks_per_sweep times by 10^19 and writes the remainders, the first one first.
void split_off_chunks(std::span<std::uint64_t> number, std::span<std::uint64_t, chunks_per_sweep> chunks) {
    std::array<std::uint64_t, chunks_per_sweep> remainders{};
    for (std::size_t index = number.size(); index-- > 0;) {
        std::uint64_t limb = number[index];
        for (std::uint64_t& remainder : remainders) {
            const chunk_division division = divide_by_decimal_chunk(remainder, limb);
            limb = division.quotient;
            remainder = division.remainder;
        }
        number[index] = limb;
    }
    std::ranges::copy(remainders, chunks.begin());
}

std::span<std::uint64_t> without_leading_zeros(std::span<std::uint64_t> number) {
    while (!number.empty() && number.back() == 0) {
        number = number.first(number.size() - 1);
    }
    return number;
}

/// The number in chunks of 19 decimal digits, the least significant one first. Uses up @p number.
limb_buffer decimal_chunks(limb_buffer& number) {
    // A chunk holds 63.1 bits of a limb's 64.
    const std::size_t most_chunks = number.size() + number.size() / limb_bits + 1;
    limb_buffer chunks(digit_count(most_chunks, chunks_per_sweep) * chunks_per_sweep);
    std::size_t used = 0;
    for (auto rest = without_leading_zeros(number.limbs()); !rest.empty();
         rest = without_leading_zeros(rest)) {
        split_off_chunks(rest, chunks.limbs().subspan(used).first<chunks_per_sweep>());
        used += chunks_per_sweep;
    }
    chunks.resize(used);
    return chunks;
}

void append_chunk_text(std::string& text, std::uint64_t chunk, std::size_t least_digits) {
    std::array<char, std::numeric_limits<std::uint64_t>::digits10 + 1> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), chunk).ptr;
    const auto count = static_cast<std::size_t>(end - digits.data());
    if (count < least_digits) {
        text.append(least_digits - count, '0');
    }
    text.append(digits.data(), count);
}

} // namespace

void limb_buffer::resize(std::size_t size) {
    const std::size_t capacity = is_long() ? long_.size() : inline_limbs;
    if (size > capacity) {
        const bool was_short = !is_long();
        long_.resize(size);
        if (was_short) {
            std::ranges::copy(std::span(short_).first(size_), long_.begin());
        }
    }
    const std::size_t kept = std::min(size, size_);
    size_ = size;
    std::ranges::fill(limbs().subspan(kept), 0);
}

magnitude magnitude::of_decimal(std::string_view digits) {
    magnitude result;
    result.buffer_.resize(digit_count(digits.size(), decimal_chunk_digits));
    const std::span<std::uint64_t> number = result.buffer_.limbs();
    std::size_t size = 0;
    while (!digits.empty()) {
        // The first chunk is the short one, so that all that follow are whole.
        const std::size_t count = (digits.size() - 1) % decimal_chunk_digits + 1;
        size = append_chunk(number, size, chunk_value(digits.substr(0, count)));
        digits.remove_prefix(count);
    }
    result.buffer_.resize(size);
    return result;
}

magnitude magnitude::of_digits(std::string_view digits, unsigned bits_per_digit) {
    magnitude result;
    result.buffer_.resize(limbs_for_bits(digits.size() * bits_per_digit));
    const std::span<std::uint64_t> number = result.buffer_.limbs();
    std::size_t index = 0;
    unsigned shift = 0;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        const std::uint64_t known = digit_value(*digit);
        const std::uint64_t value = known < std::uint64_t{1} << bits_per_digit ? known : 0;
        number[index] |= value << shift;
        shift += bits_per_digit;
        if (shift >= limb_bits) {
            shift -= limb_bits;
            ++index;
            if (shift != 0) {
                number[index] = value >> (bits_per_digit - shift);
            }
        }
    }
    result.drop_leading_zero_limbs();
    return result;
}

std::size_t magnitude::bit_length() const {
    const auto number = buffer_.limbs();
    return number.empty()
               ? 0
               : number.size() * limb_bits - static_cast<unsigned>(std::countl_zero(number.back()));
}

bool magnitude::bit(std::size_t index) const {
    const auto number = buffer_.limbs();
    return index / limb_bits < number.size() && (number[index / limb_bits] >> (index % limb_bits) & 1) != 0;
}

void magnitude::keep_low_bits(std::size_t count) {
    if (count >= bit_length()) {
        return;
    }
    buffer_.resize(limbs_for_bits(count));
    if (count % limb_bits != 0) {
        buffer_.limbs().back() &= low_mask(count % limb_bits);
    }
    drop_leading_zero_limbs();
}

void magnitude::invert_low_bits(std::size_t count) {
    buffer_.resize(limbs_for_bits(count));
    for (std::uint64_t& limb : buffer_.limbs()) {
        limb = ~limb;
    }
    keep_low_bits(count);
    drop_leading_zero_limbs();
}

void magnitude::increment() {
    for (std::uint64_t& limb : buffer_.limbs()) {
        if (++limb != 0) {
            return;
        }
    }
    buffer_.resize(buffer_.size() + 1);
    buffer_.limbs().back() = 1;
}

void magnitude::decrement() {
    for (std::uint64_t& limb : buffer_.limbs()) {
        if (limb-- != 0) {
            break;
        }
    }
    drop_leading_zero_limbs();
}

void magnitude::append_decimal(std::string& text) const {
    if (buffer_.size() <= 1) {
        append_chunk_text(text, buffer_.size() == 0 ? 0 : buffer_.limbs().front(), 1);
        return;
    }
    limb_buffer number = buffer_;
    limb_buffer chunks = decimal_chunks(number);
    const auto counting = without_leading_zeros(chunks.limbs());
    text.reserve(text.size() + counting.size() * decimal_chunk_digits);
    append_chunk_text(text, counting.back(), 1);
    for (std::size_t index = counting.size() - 1; index-- > 0;) {
        append_chunk_text(text, counting[index], decimal_chunk_digits);
    }
}

void magnitude::append_digits(std::string& text, unsigned bits_per_digit, std::size_t count) const {
    const auto number = buffer_.limbs();
    const std::size_t present = std::min(count, digit_count(bit_length(), bits_per_digit));
    text.append(count, '0');
    char* place = text.data() + text.size();
    std::size_t index = 0;
    unsigned shift = 0;
    for (std::size_t digit = 0; digit < present; ++digit) {
        std::uint64_t value = number[index] >> shift;
        shift += bits_per_digit;
        if (shift >= limb_bits) {
            shift -= limb_bits;
            ++index;
            if (shift != 0 && index < number.size()) {
                value |= number[index] << (bits_per_digit - shift);
            }
        }
        *--place = upper_case_digits[value & low_mask(bits_per_digit)];
    }
}

void magnitude::drop_leading_zero_limbs() {
    buffer_.resize(without_leading_zeros(buffer_.limbs()).size());
}

} // namespace kvr

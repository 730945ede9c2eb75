#include "kvr/numeric/magnitude.h"

#include "kvr/numeric/bit_count.h"
#include "kvr/numeric/decimal_conversion.h"
#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/wide_arithmetic.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace kvr {

namespace {

constexpr unsigned limb_bits = std::numeric_limits<std::uint64_t>::digits;

std::size_t limbs_for_bits(std::size_t count) {
    return digit_count(count, limb_bits);
}

/// Returns a mask of the @p count lowest bits. Precondition: count < limb_bits.
std::uint64_t low_mask(std::size_t count) {
    return (std::uint64_t{1} << count) - 1;
}

/// Fills the characters from @p begin to @p end with the lowest digits of a number, of any size, with leading
/// zeros.
void write_digits_one_by_one(char* begin, char* end, limb_view number, unsigned bits_per_digit) {
    std::size_t index = 0;
    unsigned shift = 0;
    while (end != begin && index < number.size()) {
        std::uint64_t value = number[index] >> shift;
        shift += bits_per_digit;
        if (shift >= limb_bits) {
            shift -= limb_bits;
            ++index;
            if (shift != 0 && index < number.size()) {
                value |= number[index] << (bits_per_digit - shift);
            }
        }
        *--end = upper_case_digits[value & low_mask(bits_per_digit)];
    }
    std::fill(begin, end, '0');
}

} // namespace

limb_buffer& limb_buffer::operator=(const limb_buffer& other) { // NOLINT(bugprone-unhandled-self-assignment)
    long_ = other.long_;
    size_ = other.size_;
    if (!is_long()) {
        std::copy_n(other.short_.begin(), size_, short_.begin()); // the other elements are uninitialized
    }
    return *this;
}

void limb_buffer::resize_long(std::size_t size) {
    if (size > long_.size()) {
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

void magnitude::read_decimal(std::string_view digits) {
    limb_buffer chunks(digit_count(digits.size(), decimal_chunk_digits));
    read_chunks(chunks.limbs(), digits);
    buffer_.resize(chunks.size());
    join_chunks(buffer_.limbs(), chunks.limbs());
    drop_leading_zero_limbs();
}

void magnitude::read_digits(std::string_view digits, unsigned bits_per_digit) {
    read_one_by_one(read_blocks(digits, bits_per_digit), bits_per_digit);
}

bool magnitude::read_known_digits(std::string_view digits, unsigned bits_per_digit) {
    const std::string_view rest = read_blocks(digits, bits_per_digit);
    if (std::ranges::any_of(rest, [](char digit) { return digit_value(digit) == dont_care_digit; })) {
        return false;
    }
    read_one_by_one(rest, bits_per_digit);
    return true;
}

magnitude magnitude::of_decimal(std::string_view digits) {
    magnitude result;
    result.read_decimal(digits);
    return result;
}

magnitude magnitude::of_digits(std::string_view digits, unsigned bits_per_digit) {
    magnitude result;
    result.read_digits(digits, bits_per_digit);
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
    for (auto limb = buffer_.limbs().begin(); (*limb)-- == 0;) {
        ++limb;
    }
    drop_leading_zero_limbs();
}

limb_buffer magnitude::decimal_chunks() const {
    limb_buffer chunks(chunks_for_bits(bit_length()));
    split_into_chunks(chunks.limbs(), buffer_.limbs());
    return chunks;
}

void magnitude::append_decimal(std::string& text) const {
    const limb_buffer chunks = decimal_chunks();
    const std::size_t count = std::max<std::size_t>(count_digits(chunks.limbs()), 1);
    text.append(count, '0');
    write_digits(text.data() + text.size() - count, chunks.limbs(), count);
}

void magnitude::append_digits(std::string& text, unsigned bits_per_digit, std::size_t count) const {
    text.append(count, '0');
    write_low_digits(text.data() + text.size() - count, bits_per_digit, count);
}

void magnitude::write_low_digits(char* place, unsigned bits_per_digit, std::size_t count) const {
    limb_view number = buffer_.limbs();
    char* end = place + count;
    if (bits_per_digit == 4) {
        for (; !number.empty() && count >= limb_hex_digits; count -= limb_hex_digits) {
            end -= limb_hex_digits;
            write_hex_limb(end, number.front());
            number = number.subspan(1);
        }
    }
    if (end != place) {
        write_digits_one_by_one(place, end, number, bits_per_digit);
    }
}

/// Fast path of reading: parses whole limbs from the end as long as all their characters are hexadecimal
/// digits. Returns the digits before them.
std::string_view magnitude::read_blocks(std::string_view digits, unsigned bits_per_digit) {
    const std::size_t size = limbs_for_bits(bit_count(digits.size(), bits_per_digit));
    buffer_.resize(size);
    if (bits_per_digit != 4) {
        return digits;
    }
    std::uint64_t* limb = buffer_.limbs().data();
    while (digits.size() >= limb_hex_digits &&
           read_sixteen(digits.data() + digits.size() - limb_hex_digits, *limb)) {
        digits.remove_suffix(limb_hex_digits);
        ++limb;
    }
    return digits;
}

/// Exact path for any characters: parses the digits before the whole limbs that were already read.
void magnitude::read_one_by_one(std::string_view digits, unsigned bits_per_digit) {
    if (digits.empty()) {
        drop_leading_zero_limbs();
        return;
    }
    const limb_span number = buffer_.limbs().last(limbs_for_bits(digits.size() * bits_per_digit));
    std::ranges::fill(number, 0);
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
    drop_leading_zero_limbs();
}

void magnitude::drop_leading_zero_limbs() {
    buffer_.resize(without_leading_zeros(buffer_.limbs()).size());
}

} // namespace kvr

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvr {

/// An array of 64-bit limbs that needs no allocation for up to inline_limbs limbs.
class limb_buffer {
public:
    /// Sufficient for numbers of 1,024 bits, including their decimal chunks.
    static constexpr std::size_t inline_limbs = 20;

    limb_buffer() {} // NOLINT: an inline limb is written when the size grows over it
    limb_buffer(const limb_buffer& other) : limb_buffer() { *this = other; }
    limb_buffer& operator=(const limb_buffer& other);
    ~limb_buffer() = default;
    explicit limb_buffer(std::size_t size) : limb_buffer() { resize(size); }

    std::size_t size() const { return size_; }
    std::span<std::uint64_t> limbs() { return {is_long() ? long_.data() : short_.data(), size_}; }
    std::span<const std::uint64_t> limbs() const { return {is_long() ? long_.data() : short_.data(), size_}; }

    /// Keeps the existing limbs; new ones are 0.
    void resize(std::size_t size) {
        if (size > inline_limbs || is_long()) {
            resize_long(size);
        } else {
            for (std::size_t index = size_; index < size; ++index) {
                short_[index] = 0;
            }
            size_ = size;
        }
    }

private:
    void resize_long(std::size_t size);
    bool is_long() const { return !long_.empty(); }

    std::size_t size_ = 0;
    std::array<std::uint64_t, inline_limbs> short_;
    std::vector<std::uint64_t> long_; ///< in use once the size has exceeded inline_limbs; never shrinks
};

/// An unsigned integer of any length, for the conversion of digit strings. All digit strings have the most
/// significant digit first.
///
/// Decimal conversions take somewhat more time than a Karatsuba multiplication: ten times the digits take 40
/// times as long. All other conversions take linear time.
class magnitude {
public:
    magnitude() = default; ///< zero

    static magnitude of_decimal(std::string_view digits);                         ///< read_decimal()
    static magnitude of_digits(std::string_view digits, unsigned bits_per_digit); ///< read_digits()

    // The read functions replace the previous value.

    /// Precondition: only "0" to "9". No digits give zero.
    void read_decimal(std::string_view digits);

    /// @p bits_per_digit is 1, 3 or 4. A character that is no digit of that size counts as 0, and so does the
    /// don't-care digit.
    void read_digits(std::string_view digits, unsigned bits_per_digit);

    /// Does the same, but returns false if there is a don't-care digit; the value is then unspecified.
    bool read_known_digits(std::string_view digits, unsigned bits_per_digit);

    /// Returns the number of bits without leading zeros; 0 for zero.
    std::size_t bit_length() const;
    /// Returns the bit of weight 2^index; index may exceed the number.
    bool bit(std::size_t index) const;

    /// Clears all bits above the @p count lowest.
    void keep_low_bits(std::size_t count);
    /// Inverts the @p count lowest bits. Precondition: all higher bits are 0.
    void invert_low_bits(std::size_t count);
    void increment();
    /// Precondition: the value is not zero.
    void decrement();

    /// Returns the number in chunks of 19 decimal digits; see decimal_conversion.h.
    limb_buffer decimal_chunks() const;
    /// Appends the shortest decimal text.
    void append_decimal(std::string& text) const;
    /// Appends the @p count lowest digits of @p bits_per_digit (1, 3 or 4) bits each, in upper case, with
    /// leading zeros.
    void append_digits(std::string& text, unsigned bits_per_digit, std::size_t count) const;
    /// Writes the same characters as append_digits().
    void write_low_digits(char* place, unsigned bits_per_digit, std::size_t count) const;

private:
    std::string_view read_blocks(std::string_view digits, unsigned bits_per_digit);
    void read_one_by_one(std::string_view digits, unsigned bits_per_digit);
    void drop_leading_zero_limbs();

    limb_buffer buffer_; ///< least significant limb first; the last one is not 0
};

} // namespace kvr

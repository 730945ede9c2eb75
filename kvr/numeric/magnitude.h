#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {

/// A row of 64-bit limbs that needs no allocation up to inline_limbs of them.
class limb_buffer {
public:
    /// Enough for numbers of 1,024 bits, their decimal chunks included.
    static constexpr std::size_t inline_limbs = 20;

    limb_buffer() = default;
    explicit limb_buffer(std::size_t size) { resize(size); }

    std::size_t size() const { return size_; }
    std::span<std::uint64_t> limbs() { return {is_long() ? long_.data() : short_.data(), size_}; }
    std::span<const std::uint64_t> limbs() const { return {is_long() ? long_.data() : short_.data(), size_}; }

    /// Keeps the first limbs; new ones are 0.
    void resize(std::size_t size);

private:
    bool is_long() const { return !long_.empty(); }

    std::size_t size_ = 0;
    std::array<std::uint64_t, inline_limbs> short_{};
    std::vector<std::uint64_t> long_; ///< in use from the first size above inline_limbs on; never shrinks
};

/// An unsigned integer of any length, on its way between digit strings. All digit strings have their most
/// significant digit first.
///
/// Conversions from and to decimal cost time in the square of the length, a machine word at a time:
/// a million digits take a few seconds. All others are linear.
class magnitude {
public:
    magnitude() = default; ///< zero

    /// Precondition: only "0" to "9". Without any digit: zero.
    static magnitude of_decimal(std::string_view digits);

    /// @p bits_per_digit: 1, 3 or 4. A character that is no digit of that size counts as 0, the don't-care
    /// digit too.
    static magnitude of_digits(std::string_view digits, unsigned bits_per_digit);

    /// The bits without leading zeros: 0 for zero.
    std::size_t bit_length() const;
    /// The bit of the weight 2^index, however far above the number.
    bool bit(std::size_t index) const;

    /// Clears all bits but the @p count lowest.
    void keep_low_bits(std::size_t count);
    /// Inverts the @p count lowest bits. Precondition: there are none above them.
    void invert_low_bits(std::size_t count);
    void increment();
    /// Precondition: not zero.
    void decrement();

    /// Appends the shortest decimal text.
    void append_decimal(std::string& text) const;
    /// Appends the @p count lowest digits of @p bits_per_digit (1, 3 or 4) bits, upper-case, with zeros in
    /// front of a shorter number.
    void append_digits(std::string& text, unsigned bits_per_digit, std::size_t count) const;

private:
    void drop_leading_zero_limbs();

    limb_buffer buffer_; ///< least significant limb first, the last one not 0
};

} // namespace kvr

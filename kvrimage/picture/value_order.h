#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// How words are interpreted as numbers.
struct number_form {
    bool is_signed = false;          ///< two's complement
    std::uint32_t fraction_bits = 0; ///< bits after the binary point of signed numbers
};

/// Maps the values of words of up to 64 bits to keys: unsigned numbers in the order of the values, signed or
/// not. A key is the distance from the least value of a word.
class value_order {
public:
    /// @param width 1 to widest_waveform
    value_order(std::uint32_t width, const number_form& numbers) : bits(width), form(numbers) {}

    [[nodiscard]] std::uint32_t width() const noexcept { return bits; }
    [[nodiscard]] bool is_signed() const noexcept { return form.is_signed; }
    [[nodiscard]] std::uint32_t fraction_bits() const noexcept { return form.fraction_bits; }
    /// Returns the key of the word @p text, in the form that image_words stores, or nothing if it is not set
    /// or has don't-care bits.
    [[nodiscard]] std::optional<std::uint64_t> key_of(std::string_view text) const;
    [[nodiscard]] std::uint64_t key_of_zero() const noexcept;
    [[nodiscard]] std::uint64_t highest_key() const noexcept;
    /// Returns the value: exact in decimal if signed, exact in hexadecimal ("0x1F") if unsigned; fractions
    /// are rounded to six digits.
    [[nodiscard]] std::string text_of(std::uint64_t key) const;
    /// Returns an upper bound of the length of texts.
    [[nodiscard]] std::size_t text_size() const;

private:
    std::uint32_t bits;
    number_form form;
};

} // namespace kvrimage

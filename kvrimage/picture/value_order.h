#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// What words are taken for.
struct number_form {
    bool is_signed = false;          ///< two's complement
    std::uint32_t fraction_bits = 0; ///< of signed numbers, right of the binary point
};

/// The values of words of up to 64 bits as keys: numbers that compare as the values do, signed or not. A key
/// is the distance from the least value that a word can have.
class value_order {
public:
    /// @param width 1 to widest_waveform
    value_order(std::uint32_t width, const number_form& numbers) : bits(width), form(numbers) {}

    [[nodiscard]] std::uint32_t width() const noexcept { return bits; }
    [[nodiscard]] bool is_signed() const noexcept { return form.is_signed; }
    [[nodiscard]] std::uint32_t fraction_bits() const noexcept { return form.fraction_bits; }
    /// The key of the word @p text, in the form that image_words holds; nothing for one that is not set or
    /// has don't-care bits.
    [[nodiscard]] std::optional<std::uint64_t> key_of(std::string_view text) const;
    [[nodiscard]] std::uint64_t key_of_zero() const noexcept;
    [[nodiscard]] std::uint64_t highest_key() const noexcept;
    /// The value: exact in decimal where it is signed and in hexadecimal ("0x1F") where it is not; a fraction
    /// rounded to six digits.
    [[nodiscard]] std::string text_of(std::uint64_t key) const;
    /// Characters of the longest text, at most.
    [[nodiscard]] std::size_t text_size() const;

private:
    std::uint32_t bits;
    number_form form;
};

} // namespace kvrimage

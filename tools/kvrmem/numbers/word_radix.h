#pragma once

#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

/// A radix for reading and showing words: one of the library's, or fixed point. Fixed point is two's
/// complement with `fraction_bits` bits after the binary point, written as exact decimal fractions: -1.5 or
/// 0.015625.
struct word_radix {
    kvrimage::radix digits = kvrimage::radix::hex; ///< `dec` for fixed point
    std::uint32_t integer_bits = 0;                ///< for fixed point, including the sign; else 0
    std::uint32_t fraction_bits = 0;

    [[nodiscard]] bool is_fixed_point() const noexcept { return integer_bits != 0; }
    [[nodiscard]] std::uint32_t bits() const noexcept { return integer_bits + fraction_bits; }
    friend bool operator==(const word_radix&, const word_radix&) = default;
};

/// Returns the radix with the name "bin", "oct", "dec", "uns", "hex", or "fixed:I.F".
[[nodiscard]] std::optional<word_radix> word_radix_of_name(std::string_view name);

/// Returns the exact text of @p value in @p radix: hexadecimal, octal and binary with all digits of the
/// width. Nothing if don't-care bits cannot be represented. Fixed point requires words of bits() bits.
[[nodiscard]] std::optional<std::string> shown(const kvrimage::word& value, const word_radix& radix);

/// Returns the same text, "unset" for an unset word, or "0b" and the binary digits if @p radix cannot
/// represent don't-care bits.
[[nodiscard]] std::string shown_or_gap(const std::optional<kvrimage::word>& value, const word_radix& radix);

/// Returns the maximum length of a word of @p width bits in @p radix.
[[nodiscard]] std::size_t most_characters_of_word(const word_radix& radix, std::uint32_t width);

/// @throws tool_error (wrong usage) if words of @p width bits cannot be shown in @p radix
void require_fitting(const word_radix& radix, std::uint32_t width);

/// Describes the fault of @p text for a message: "value 1FF needs 9 bits, the word has 8".
/// @param holder noun for the object with @p width bits
[[nodiscard]] std::string describe(const kvrimage::word_fault& fault, std::string_view text,
                                   kvrimage::radix digits, std::uint32_t width,
                                   std::string_view holder = "word");

/// Parses the user's @p text as a word of @p width bits: 31, -5, 0x1F. @p subject begins the error message:
/// "--fill 300".
/// @throws tool_error (wrong usage)
[[nodiscard]] kvrimage::word word_of_user(std::string_view text, std::uint32_t width,
                                          std::string_view subject);

} // namespace kvrmem

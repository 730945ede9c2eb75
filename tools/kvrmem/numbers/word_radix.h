#pragma once

#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

/// A radix in which words are read and shown: one of the library's, or fixed point, which is two's complement
/// with `fraction_bits` bits after the binary point: exact decimal fractions, -1.5 or 0.015625.
struct word_radix {
    kvrimage::radix digits = kvrimage::radix::hex; ///< `dec` for fixed point
    std::uint32_t integer_bits = 0;                ///< of fixed point, with the sign; else 0
    std::uint32_t fraction_bits = 0;

    [[nodiscard]] bool is_fixed_point() const noexcept { return integer_bits != 0; }
    [[nodiscard]] std::uint32_t bits() const noexcept { return integer_bits + fraction_bits; }
    friend bool operator==(const word_radix&, const word_radix&) = default;
};

/// The radix called @p name: "bin", "oct", "dec", "uns", "hex", or "fixed:I.F".
[[nodiscard]] std::optional<word_radix> word_radix_of_name(std::string_view name);

/// @p value in @p radix, exactly: hexadecimal, octal and binary with all digits of the width. Nothing when
/// don't-care bits cannot be shown. Fixed point needs words of bits() bits.
[[nodiscard]] std::optional<std::string> shown(const kvrimage::word& value, const word_radix& radix);

/// The same, with "unset" for a word that was never set, and the word's binary digits after "0b" where @p
/// radix cannot show its don't-care bits.
[[nodiscard]] std::string shown_or_gap(const std::optional<kvrimage::word>& value, const word_radix& radix);

/// Characters that a word of @p width bits takes at most in @p radix.
[[nodiscard]] std::size_t most_characters_of_word(const word_radix& radix, std::uint32_t width);

/// @throws tool_error (wrong usage) when words of @p width bits cannot be shown in @p radix.
void require_fitting(const word_radix& radix, std::uint32_t width);

/// What is wrong with @p text, for a message: "value 1FF needs 9 bits, the word has 8".
/// @param holder what has @p width bits
[[nodiscard]] std::string describe(const kvrimage::word_fault& fault, std::string_view text,
                                   kvrimage::radix digits, std::uint32_t width,
                                   std::string_view holder = "word");

/// The word of @p width bits that the user wrote as @p text: 31, -5, 0x1F. @p subject begins the message when
/// it is none: "--fill 300".
/// @throws tool_error (wrong usage)
[[nodiscard]] kvrimage::word word_of_user(std::string_view text, std::uint32_t width,
                                          std::string_view subject);

} // namespace kvrmem

#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/rounding.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// Words that are two's complement numbers with a binary point.
struct fixed_point {
    std::uint32_t integer_bits = 1;  ///< with the sign, at least 1
    std::uint32_t fraction_bits = 0; ///< right of the binary point

    /// Of a word.
    [[nodiscard]] std::uint32_t bits() const noexcept { return integer_bits + fraction_bits; }
};

/// What "fixed:I.F" stands for, I integer and F fraction bits; nothing for other texts, and where there is no
/// integer bit or are more bits than a word can have.
[[nodiscard]] KVRIMAGE_API std::optional<fixed_point> fixed_point_of_name(std::string_view name) noexcept;

/// Why a text is no word of a fixed_point.
enum class fixed_point_fault : std::uint8_t {
    syntax,      ///< no decimal number
    out_of_range ///< it is not held, also after rounding
};

/// Sets @p word, as image_words holds it, to the number @p text: decimal digits with a sign, a point and an
/// exponent where needed ("-1.5", "+.25", "2e-3"). Exact at any length. Nothing is returned for success; @p
/// word is in doubt otherwise.
/// @param saturate a number out of range is the largest or the smallest one
std::optional<fixed_point_fault> make_fixed_point(std::string_view text, const fixed_point& format,
                                                  rounding how, bool saturate, std::string& word);

/// A word, or why there is none: one of the two.
struct fixed_point_result {
    std::optional<word> value;              ///< the word
    std::optional<fixed_point_fault> fault; ///< why there is none
};

/// The word of @p format that the number @p text is; parameters as of make_fixed_point().
/// @throws std::invalid_argument when @p format has no integer bit, or more bits than a word can have
[[nodiscard]] KVRIMAGE_API fixed_point_result parse_fixed_point(std::string_view text,
                                                                const fixed_point& format,
                                                                rounding how = rounding::nearest,
                                                                bool saturate = false);

} // namespace kvrimage

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// Words that are two's complement numbers with a binary point.
struct fixed_point {
    std::uint32_t integer_bits = 1; ///< with the sign, at least 1
    std::uint32_t fraction_bits = 0;

    [[nodiscard]] std::uint32_t bits() const noexcept { return integer_bits + fraction_bits; }
};

/// What "fixed:I.F" stands for, I integer and F fraction bits; nothing for other texts, and where there is no
/// integer bit or are more bits than a word can have.
[[nodiscard]] std::optional<fixed_point> fixed_point_of_name(std::string_view name) noexcept;

/// Which of the two numbers around one that cannot be held.
enum class rounding : std::uint8_t {
    nearest, ///< the nearer one; of two that are as near the one farther from 0
    even,    ///< the nearer one; of two that are as near the one whose last bit is 0
    down     ///< the lower one
};

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

} // namespace kvrimage

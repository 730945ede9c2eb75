#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/rounding.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// A format of fixed-point numbers in two's complement.
struct fixed_point {
    std::uint32_t integer_bits = 1;  ///< including the sign bit, at least 1
    std::uint32_t fraction_bits = 0; ///< bits after the binary point

    /// Returns the word width in bits.
    [[nodiscard]] std::uint32_t bits() const noexcept { return integer_bits + fraction_bits; }
};

/// Parses the name "fixed:I.F" of a format with I integer and F fraction bits. Returns nothing for any other
/// text, for I = 0, and for more bits than a word can have.
[[nodiscard]] KVRIMAGE_API std::optional<fixed_point> fixed_point_of_name(std::string_view name) noexcept;

/// Why a text is no number of a fixed_point format.
enum class fixed_point_fault : std::uint8_t {
    syntax,      ///< not a decimal number
    out_of_range ///< out of range, even after rounding
};

/// Converts @p text to a word in the form that image_words stores. @p text is a decimal number with an
/// optional sign, point and exponent ("-1.5", "+.25", "2e-3"). The conversion is exact at any length. Returns
/// nothing on success; after a fault the value of @p word is unspecified.
/// @param saturate replaces a number out of range by the largest or the smallest one
std::optional<fixed_point_fault> make_fixed_point(std::string_view text, const fixed_point& format,
                                                  rounding how, bool saturate, std::string& word);

/// A word or a fault, never both.
struct fixed_point_result {
    std::optional<word> value;              ///< the word
    std::optional<fixed_point_fault> fault; ///< the reason if there is no word
};

/// Converts @p text to a word of @p format. The parameters are those of make_fixed_point().
/// @throws std::invalid_argument if @p format has no integer bit, or more bits than a word can have
[[nodiscard]] KVRIMAGE_API fixed_point_result parse_fixed_point(std::string_view text,
                                                                const fixed_point& format,
                                                                rounding how = rounding::nearest,
                                                                bool saturate = false);

} // namespace kvrimage

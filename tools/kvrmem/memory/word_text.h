#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/memory/store/word_row.h"
#include "kvr/numeric/exact_value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

inline constexpr std::uint32_t bits_per_hex_digit = 4;
inline constexpr std::string_view hex_digits = "0123456789abcdefABCDEF";

// How a memory_image holds a word of `width` bits: as ceil(width / 4) upper-case hexadecimal digits, which
// may be "X" for four don't-care bits; or, where a don't-care bit stands beside a plain one, as `width`
// binary digits.

/// Makes @p word from @p text, a number in @p radix: exact, two's complement for signed decimal. A value
/// that needs more than @p width (at least 1) bits is an error, never cut. Nothing is returned for success.
std::optional<kvr::exact_word_error> make_word(std::string_view text, KVR_MEMORY_RADIXES radix,
                                               std::uint32_t width, std::string& word);

/// True when the texts of @p row are words of @p width bits without don't-care digits, in the form that the
/// image holds: what make_word() makes of such a text in RADIX_HEX is the text itself.
[[nodiscard]] bool are_words(const kvr::word_row& row, std::uint32_t width) noexcept;

/// Overwrites @p text with @p word in @p radix: hexadecimal, octal and binary with all their digits,
/// decimal without leading zeros and "-" before a negative signed one. False when a don't-care bit cannot
/// be shown in that radix.
bool show_word(std::string_view word, KVR_MEMORY_RADIXES radix, std::uint32_t width, std::string& text);

/// True when every bit of @p word is 0 or 1.
[[nodiscard]] bool is_plain(std::string_view word) noexcept;

/// What is wrong with @p text, for a message: "value 1FF needs 9 bits, the word has 8".
[[nodiscard]] std::string describe(const kvr::exact_word_error& error, std::string_view text,
                                   KVR_MEMORY_RADIXES radix, std::uint32_t width);

/// The word of @p width bits that a person wrote as @p text: 31, -5, 0x1F. @p subject begins the message when
/// it is none: "--fill 300".
/// @throws tool_error (wrong usage)
[[nodiscard]] std::string word_of_person(std::string_view text, std::uint32_t width,
                                         std::string_view subject);

/// A radix in which a person wants to see words. RADIX_FIXED_POINT is two's complement with `fraction_bits`
/// bits behind the binary point: exact decimal fractions, -1.5 or 0.015625.
struct word_radix {
    KVR_MEMORY_RADIXES radix = RADIX_HEX;
    std::uint32_t integer_bits = 0; ///< of RADIX_FIXED_POINT, with the sign
    std::uint32_t fraction_bits = 0;
};

/// The radix that a person calls @p name: "bin", "oct", "dec", "uns", "hex", or "fixed:I.F".
[[nodiscard]] std::optional<word_radix> word_radix_of_name(std::string_view name);

/// Overwrites @p text with @p word in @p radix, like the function above. RADIX_FIXED_POINT needs words of
/// integer_bits + fraction_bits bits.
bool show_word(std::string_view word, const word_radix& radix, std::uint32_t width, std::string& text);

/// The same, with "unset" for a word that was never set (""), and the word's binary digits behind "0b"
/// where @p radix cannot show its don't-care bits.
void show_word_or_gap(std::string_view word, const word_radix& radix, std::uint32_t width, std::string& text);

/// Characters that a word of @p width bits takes at most in @p radix.
[[nodiscard]] std::size_t most_characters_of_word(const word_radix& radix, std::uint32_t width);

/// @throws tool_error (wrong usage) when words of @p width bits cannot be shown in @p radix.
void require_fitting(const word_radix& radix, std::uint32_t width);

} // namespace kvrmem

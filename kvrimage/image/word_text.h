#pragma once

#include "kvr/memory/store/word_row.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

inline constexpr std::uint32_t bits_per_hex_digit = 4;
inline constexpr std::string_view hex_digits = "0123456789abcdefABCDEF";

// Words as image_words holds them.

/// Makes @p word from @p text, a number in @p digits_radix: exact, two's complement for `dec`. A value that needs more than
/// @p width (at least 1) bits is a fault, never cut. Nothing is returned for success.
std::optional<word_fault> make_word(std::string_view text, radix digits_radix, std::uint32_t width, std::string& word);

/// True when the texts of @p row are words of @p width bits without don't-care digits, in the form that the image holds:
/// what make_word() makes of such a text in `hex` is the text itself.
[[nodiscard]] bool are_words(const kvr::word_row& row, std::uint32_t width) noexcept;

/// Overwrites @p text with @p word in @p digits_radix: hexadecimal, octal and binary with all their digits, decimal without
/// leading zeros and "-" before a negative signed one. False when a don't-care bit cannot be shown in that radix.
bool show_word(std::string_view word, radix digits_radix, std::uint32_t width, std::string& text);

/// True when every bit of @p word is 0 or 1.
[[nodiscard]] bool is_plain(std::string_view word) noexcept;

/// Characters that a word of @p width bits takes at most in @p digits_radix.
[[nodiscard]] std::size_t most_characters_of_word(radix digits_radix, std::uint32_t width);

/// The word that image_words holds as @p text, and the reverse.
[[nodiscard]] word word_of_text(std::string_view text, std::uint32_t width);
[[nodiscard]] std::string text_of_word(const word& value);

} // namespace kvrimage

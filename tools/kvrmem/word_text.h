#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/numeric/exact_value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

// How a memory_image holds a word of `width` bits: as ceil(width / 4) upper-case hexadecimal digits, which
// may be "X" for four don't-care bits; or, where a don't-care bit stands beside a plain one, as `width`
// binary digits.

/// Makes @p word from @p text, a number in @p radix: exact, two's complement for signed decimal. A value
/// that needs more than @p width (at least 1) bits is an error, never cut. Nothing is returned for success.
std::optional<kvr::exact_word_error> make_word(std::string_view text, KVR_MEMORY_RADIXES radix,
                                               std::uint32_t width, std::string& word);

/// Overwrites @p text with @p word in @p radix: hexadecimal, octal and binary with all their digits,
/// decimal without leading zeros and "-" before a negative signed one. False when a don't-care bit cannot
/// be shown in that radix.
bool show_word(std::string_view word, KVR_MEMORY_RADIXES radix, std::uint32_t width, std::string& text);

/// True when every bit of @p word is 0 or 1.
[[nodiscard]] bool is_plain(std::string_view word) noexcept;

/// What is wrong with @p text, for a message: "value 1FF needs 9 bits, the word has 8".
[[nodiscard]] std::string describe(const kvr::exact_word_error& error, std::string_view text,
                                   KVR_MEMORY_RADIXES radix, std::uint32_t width);

/// A value as people write it: 31, -5, 0x1F, 0b1010, 0o17, with "_" between digits.
struct human_value {
    std::string digits; ///< without prefix and "_"; with "-" where there is one
    KVR_MEMORY_RADIXES radix = RADIX_DEC;
};

/// Takes @p text for a value; the digits are not checked. Without a prefix it is signed decimal when it
/// begins with "-", else unsigned decimal.
[[nodiscard]] human_value read_human_value(std::string_view text);

} // namespace kvrmem

#pragma once

#include "kvr/memory/memory_types.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvr {

// Memory words as users write them: exact at any width, two's complement for signed decimal, most significant
// digit first. Radixes must be RADIX_BIN, RADIX_DEC, RADIX_UNS, RADIX_HEX or RADIX_OCT.

/// Why a text is no word of the requested width and radix.
struct exact_word_error {
    enum class kind {
        empty,         ///< the text has no digit
        invalid_digit, ///< a character is no digit of the radix
        too_wide,      ///< the value does not fit the width
        dont_care      ///< a don't-care digit is not allowed, or the target radix cannot show it
    } what;
    std::size_t position; ///< index of the character at fault; for too_wide, of the first significant digit
    std::uint64_t bits_needed; ///< for too_wide, the smallest width that holds the value; else 0

    friend bool operator==(const exact_word_error&, const exact_word_error&) = default;
};

enum class dont_care_digits { allowed, refused };

/// A conversion of words of one width.
struct exact_conversion {
    KVR_MEMORY_RADIXES from = RADIX_NONE;
    KVR_MEMORY_RADIXES to = RADIX_NONE;
    std::size_t width = 0; ///< in bits, at least 1
    dont_care_digits dont_cares = dont_care_digits::allowed;
};

/// Converts @p text, a word in the radix `from`, to the radix `to` and appends it to @p result.
///
/// Letter case does not matter, and any number of leading zeros is valid. RADIX_DEC accepts a leading "-" and
/// values from -2^(width-1) to 2^(width-1)-1. The other radixes accept values without a "1" above the width.
/// "X" and "x" are don't-care digits in binary, octal and hexadecimal text; a digit that extends beyond the
/// word stands only for its bits within the word.
///
/// The result is in upper case: exactly width binary digits, as many hexadecimal or octal digits as the width
/// requires (rounded up), or the shortest decimal text. Don't-care bits can be shown as "X" only if all bits
/// of the digit are don't-care, and never in decimal.
///
/// @return nothing on success; otherwise the fault, with @p result unchanged
std::optional<exact_word_error> append_exact_word(std::string& result, std::string_view text,
                                                  const exact_conversion& conversion);

/// Does the same for any text on the exact path, without the fast paths of small_word.h.
std::optional<exact_word_error> append_exact_word_plainly(std::string& result, std::string_view text,
                                                          const exact_conversion& conversion);

/// Converts a word to its @p width binary digits; see append_exact_word(). After a fault, @p bits is
/// unchanged.
std::optional<exact_word_error> exact_bits(std::string_view text, KVR_MEMORY_RADIXES radix,
                                           std::uint32_t width, std::string& bits,
                                           dont_care_digits dont_cares = dont_care_digits::allowed);

/// Converts the binary digits @p bits of a word to @p radix; the width is their number. See
/// append_exact_word(). After a fault, @p text is unchanged.
std::optional<exact_word_error> exact_text(std::string_view bits, KVR_MEMORY_RADIXES radix,
                                           std::string& text);

} // namespace kvr

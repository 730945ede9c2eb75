#pragma once

#include "kvr/memory/memory_types.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvr {

// Memory words as people write and read them: exact at any width, two's complement for signed decimal, the
// most significant digit first. Radixes here are RADIX_BIN, RADIX_DEC, RADIX_UNS, RADIX_HEX and RADIX_OCT;
// any other one is a mistake of the caller.

/// Why a text is no word of the requested width and radix.
struct exact_word_error {
    enum class kind {
        empty,         ///< no digit in it
        invalid_digit, ///< a character that is no digit of the radix
        too_wide,      ///< a value that does not fit the width
        dont_care      ///< a don't-care digit that was refused, or that the target radix cannot show
    } what;
    std::size_t position;      ///< of the character at fault; for too_wide, of the first digit that counts
    std::uint64_t bits_needed; ///< for too_wide: the smallest width that the value fits; else 0

    friend bool operator==(const exact_word_error&, const exact_word_error&) = default;
};

enum class dont_care_digits { allowed, refused };

/// A conversion of words of one width.
struct exact_conversion {
    KVR_MEMORY_RADIXES from = RADIX_NONE;
    KVR_MEMORY_RADIXES to = RADIX_NONE;
    std::size_t width = 0; ///< in bits; a conversion needs at least 1
    dont_care_digits dont_cares = dont_care_digits::allowed;
};

/// Appends to @p result the word whose text in the radix `from` is @p text, as text in the radix `to`.
///
/// Letter case does not matter, and any number of leading zeros is valid. RADIX_DEC takes a leading "-" and
/// the values from -2^(width-1) to 2^(width-1)-1; the others take what has no "1" above the width.
/// "X" and "x" are don't-care digits in binary, octal and hexadecimal text; one that extends past the top
/// of the word stands for the bits that it has in the word.
///
/// The result is upper-case: exactly width binary digits, as many hexadecimal or octal ones as the width
/// needs (rounded up), or the shortest decimal text. A don't-care bit can be shown as "X" where all bits of
/// its digit are don't-care, and never in decimal.
///
/// @return nothing for a success, else what is wrong, with @p result as it was.
std::optional<exact_word_error> append_exact_word(std::string& result, std::string_view text,
                                                  const exact_conversion& conversion);

/// The same without the fast paths of small_word.h: the exact path, for every text.
std::optional<exact_word_error> append_exact_word_plainly(std::string& result, std::string_view text,
                                                          const exact_conversion& conversion);

/// Sets @p bits to the @p width binary digits of a word; see append_exact_word(). After an error, @p bits is
/// as it was.
std::optional<exact_word_error> exact_bits(std::string_view text, KVR_MEMORY_RADIXES radix,
                                           std::uint32_t width, std::string& bits,
                                           dont_care_digits dont_cares = dont_care_digits::allowed);

/// Sets @p text to the word of the binary digits @p bits in @p radix, at the width that they have; see
/// append_exact_word(). After an error, @p text is as it was.
std::optional<exact_word_error> exact_text(std::string_view bits, KVR_MEMORY_RADIXES radix,
                                           std::string& text);

} // namespace kvr

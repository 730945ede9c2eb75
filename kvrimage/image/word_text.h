#pragma once

#include "kvr/memory/store/word_row.h"
#include "kvr/numeric/digit_blocks.h"
#include "kvr/numeric/digit_value.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

inline constexpr std::uint32_t bits_per_byte = 8;
inline constexpr std::uint32_t bits_per_hex_digit = 4;
inline constexpr std::uint32_t bits_per_limb = 64; ///< of numbers of several
inline constexpr std::string_view hex_digits = "0123456789abcdefABCDEF";

// Words as image_words holds them.

/// What the library kvr calls @p of.
[[nodiscard]] KVR_MEMORY_RADIXES kvr_radix(radix of) noexcept;

/// The radix in which image_words holds @p word.
[[nodiscard]] inline radix radix_of_word(std::string_view word, std::uint32_t width) noexcept {
    return word.size() == width ? radix::bin : radix::hex;
}

/// Makes @p word from @p text, a number in @p digits_radix: exact, two's complement for `dec`. A value that
/// needs more than
/// @p width (at least 1) bits is a fault, never cut. Nothing is returned for success.
std::optional<word_fault> make_word(std::string_view text, radix digits_radix, std::uint32_t width,
                                    std::string& word);

/// make_word(), which also takes a number in `dec` that is too large to be signed and not to be unsigned (200
/// in 8 bits); it sets @p is_unsigned then. How many bits a larger one needs is said for one without a sign.
std::optional<word_fault> make_word_of_any_sign(std::string_view text, radix digits_radix,
                                                std::uint32_t width, std::string& word, bool& is_unsigned);

/// True for what is a word with a don't-care digit, and may be a number with a prefix: "0x1F".
[[nodiscard]] inline bool looks_prefixed(std::string_view text) noexcept {
    return text.starts_with("0x") && text.size() > 2;
}

/// True when the texts of @p row are words of @p width bits without don't-care digits, in the form that the
/// image holds: what make_word() makes of such a text in `hex` is the text itself.
[[nodiscard]] bool are_words(const kvr::word_row& row, std::uint32_t width) noexcept;

/// Overwrites @p text with @p word in @p digits_radix: hexadecimal, octal and binary with all their digits,
/// decimal without leading zeros and "-" before a negative signed one. False when a don't-care bit cannot be
/// shown in that radix.
bool show_word(std::string_view word, radix digits_radix, std::uint32_t width, std::string& text);

/// True when every bit of @p word is 0 or 1.
[[nodiscard]] bool is_plain(std::string_view word) noexcept;

/// The index of the first of @p bytes that a word of @p width bits does not hold; nothing when it holds all.
[[nodiscard]] std::optional<std::size_t> find_wide_byte(std::string_view bytes, std::uint32_t width) noexcept;

/// Characters that a word of @p width bits takes at most in @p digits_radix.
[[nodiscard]] std::size_t most_characters_of_word(radix digits_radix, std::uint32_t width);

/// Hexadecimal digits of a word of up to 64 bits.
inline constexpr std::size_t most_small_digits = 16;

/// Sets @p value to what @p digits, 1 to most_small_digits hexadecimal digits of either case, are worth.
/// False, with any value, when one of them is none.
[[nodiscard]] inline bool read_small_word(std::string_view digits, std::uint64_t& value) noexcept {
    const std::size_t count = digits.size();
    if (count == most_small_digits) {
        return kvr::read_sixteen(digits.data(), value);
    }
    if (count >= kvr::block_digits) {
        // Two blocks that may overlap: where they do, they have the same digits.
        std::uint64_t high = 0;
        std::uint64_t low = 0;
        const std::size_t rest = count - kvr::block_digits;
        const bool are_digits = kvr::read_eight(kvr::load_eight(digits.data()), high) &&
                                kvr::read_eight(kvr::load_eight(digits.data() + rest), low);
        value = high << (bits_per_hex_digit * rest) | low;
        return are_digits;
    }
    value = 0;
    unsigned all = 0;
    for (const char digit : digits) {
        const unsigned digit_is = kvr::digit_value(digit);
        value = value << bits_per_hex_digit | digit_is;
        all |= digit_is;
    }
    return all < kvr::dont_care_digit;
}

/// The word that image_words holds as @p text, and the reverse.
[[nodiscard]] word word_of_text(std::string_view text, std::uint32_t width);
[[nodiscard]] std::string text_of_word(const word& value);

/// The text by which image_words holds a word, without an allocation for those of up to 64 bits that are
/// plain.
class held_text {
public:
    explicit held_text(const word& value);
    [[nodiscard]] std::string_view view() const noexcept {
        return longer.empty() ? std::string_view(digits.data() + (digits.size() - count), count)
                              : std::string_view(longer);
    }

private:
    std::array<char, most_small_digits> digits; ///< the last `count` of them
    std::size_t count = 0;
    std::string longer;
};

} // namespace kvrimage

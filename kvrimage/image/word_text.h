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
inline constexpr std::uint32_t bits_per_limb = 64; ///< of numbers with several limbs
inline constexpr std::string_view hex_digits = "0123456789abcdefABCDEF";

// Words in the form that image_words stores.

/// Returns the radix of the library kvr that corresponds to @p of.
[[nodiscard]] KVR_MEMORY_RADIXES kvr_radix(radix of) noexcept;

/// Returns the radix in which image_words stores @p word.
[[nodiscard]] inline radix radix_of_word(std::string_view word, std::uint32_t width) noexcept {
    return word.size() == width ? radix::bin : radix::hex;
}

/// Converts @p text, a number in @p digits_radix, to the stored form. `dec` is two's complement. A value that
/// does not fit @p width bits (at least 1) is a fault, never truncated. Returns nothing on success.
std::optional<word_fault> make_word(std::string_view text, radix digits_radix, std::uint32_t width,
                                    std::string& word);

/// Like make_word(), but `dec` also accepts a number that fits only as unsigned (200 in 8 bits);
/// @p is_unsigned is then set. For a number that does not fit at all, the fault gives the unsigned width.
std::optional<word_fault> make_word_of_any_sign(std::string_view text, radix digits_radix,
                                                std::uint32_t width, std::string& word, bool& is_unsigned);

/// True for a text that begins with "0x" and more: "0x1F" may be a number with a prefix or have a don't-care
/// digit.
[[nodiscard]] inline bool looks_prefixed(std::string_view text) noexcept {
    return text.starts_with("0x") && text.size() > 2;
}

/// True if each text of @p row is a word of @p width bits without don't-care digits in the stored form, so
/// that make_word() with `hex` would return it unchanged.
[[nodiscard]] bool are_words(const kvr::word_row& row, std::uint32_t width) noexcept;

/// Overwrites @p text with the digits of @p word in @p digits_radix. Hexadecimal, octal and binary have all
/// digits; decimal has no leading zeros, and "-" before a negative signed number. Returns false if a
/// don't-care bit cannot be shown in that radix.
bool show_word(std::string_view word, radix digits_radix, std::uint32_t width, std::string& text);

/// True if @p word has no don't-care bit.
[[nodiscard]] bool is_plain(std::string_view word) noexcept;

/// Returns the index of the first byte that does not fit @p width bits, or nothing if all fit.
[[nodiscard]] std::optional<std::size_t> find_wide_byte(std::string_view bytes, std::uint32_t width) noexcept;

/// Returns the maximum length of a word of @p width bits in @p digits_radix.
[[nodiscard]] std::size_t most_characters_of_word(radix digits_radix, std::uint32_t width);

/// Hexadecimal digits of a word of 64 bits.
inline constexpr std::size_t most_small_digits = 16;

/// Parses @p digits, 1 to most_small_digits hexadecimal digits of either case. Returns false if a character
/// is no digit; @p value is then unspecified.
[[nodiscard]] inline bool read_small_word(std::string_view digits, std::uint64_t& value) noexcept {
    const std::size_t count = digits.size();
    if (count == most_small_digits) {
        return kvr::read_sixteen(digits.data(), value);
    }
    if (count >= kvr::block_digits) {
        // Two blocks, which may overlap in the middle.
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

/// Conversion between a word and the text that image_words stores.
[[nodiscard]] word word_of_text(std::string_view text, std::uint32_t width);
[[nodiscard]] std::string text_of_word(const word& value);

/// The stored text of a word. Words of up to 64 bits without don't-care bits need no allocation.
class held_text {
public:
    explicit held_text(const word& value);
    [[nodiscard]] std::string_view view() const noexcept {
        return longer.empty() ? std::string_view(digits.data() + (digits.size() - count), count)
                              : std::string_view(longer);
    }

private:
    std::array<char, most_small_digits> digits; ///< the last `count` characters are in use
    std::size_t count = 0;
    std::string longer;
};

} // namespace kvrimage

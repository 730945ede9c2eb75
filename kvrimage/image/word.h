#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/radix.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The widest words, in bits.
inline constexpr std::uint32_t widest_word = 1U << 20U;

/// Why a text is no word of the radix and width that were asked for.
struct word_fault {
    /// What is wrong with it.
    enum class kind : std::uint8_t {
        empty,                ///< no digit in it
        invalid_digit,        ///< a character that is no digit of the radix
        too_wide,             ///< a value that does not fit the width
        dont_care             ///< a don't-care digit in a decimal text
    } what = kind::empty;     ///< what is wrong with this text
    std::size_t position = 0; ///< of the character at fault; for too_wide, of the first digit that counts
    std::uint64_t bits_needed = 0; ///< for too_wide: the smallest width that the value fits; else 0

    /// The same in all three.
    friend bool operator==(const word_fault&, const word_fault&) = default;
};

struct word_result;

/// The bits of one word of any width from 1 to widest_word, each 0, 1 or don't care. A value type; words of
/// up to 64 bits need no allocation.
class KVRIMAGE_API word {
public:
    /// The word 0 of @p width bits.
    /// @throws std::invalid_argument when @p width is 0 or above widest_word; so do the three below.
    explicit word(std::uint32_t width);

    /// @throws std::overflow_error when @p value does not fit @p width bits
    [[nodiscard]] static word of(std::uint64_t value, std::uint32_t width);
    /// Two's complement.
    /// @throws std::overflow_error when @p value does not fit @p width bits
    [[nodiscard]] static word of_signed(std::int64_t value, std::uint32_t width);
    /// The word whose digits in @p digits_radix, most significant first, are @p text: letter case and leading
    /// zeros do not matter; `dec` takes a leading "-"; "X" is a don't-care digit in binary, octal and
    /// hexadecimal.
    [[nodiscard]] static word_result parse(std::string_view text, radix digits_radix, std::uint32_t width);
    /// The word of @p bytes, 8 bits each: (width + 7) / 8 of them. The most significant one may have surplus
    /// high bits, which must be 0.
    /// @throws std::overflow_error when they are not
    /// @throws std::invalid_argument for another number of bytes
    [[nodiscard]] static word of_bytes(std::string_view bytes, byte_order order, std::uint32_t width);

    /// How many bits it has.
    [[nodiscard]] std::uint32_t width() const noexcept { return bits_of_word; }
    /// True when at least one bit is don't care.
    [[nodiscard]] bool has_dont_care() const noexcept;
    /// '0', '1' or 'X'. Bit 0 is the least significant one.
    /// @throws std::out_of_range
    [[nodiscard]] char bit(std::uint32_t index) const;

    /// Nothing: the value needs more than 64 bits, or has don't-care bits.
    [[nodiscard]] std::optional<std::uint64_t> to_unsigned() const noexcept;
    /// Two's complement at the width of the word.
    [[nodiscard]] std::optional<std::int64_t> to_signed() const noexcept;
    /// Exact, most significant digit first, upper-case: binary, octal and hexadecimal with all digits of the
    /// width, decimal with the fewest. Nothing where a don't-care bit cannot be shown: in decimal, and beside
    /// a plain bit of its digit.
    [[nodiscard]] std::optional<std::string> to_text(radix digits_radix) const;
    /// Appends to_text() to @p text; false, with @p text as it was, where that is nothing.
    bool append_text(radix digits_radix, std::string& text) const;
    /// The bytes of the word, the surplus high bits of the most significant one 0. Nothing when it has
    /// don't-care bits.
    [[nodiscard]] std::optional<std::string> to_bytes(byte_order order) const;

    /// The same width and bits; a don't-care bit equals a don't-care bit only.
    friend bool operator==(const word&, const word&) = default;

    /// For the library's own parts: the word that image_words holds as @p text, and the reverse.
    ///@{
    [[nodiscard]] static word of_held_text(std::string_view text, std::uint32_t width);
    void append_held_text(std::string& text) const;
    ///@}

private:
    struct part {
        std::uint64_t value = 0;     ///< don't-care bits are 0 here
        std::uint64_t dont_care = 0; ///< 1: don't care
        friend bool operator==(const part&, const part&) = default;
    };

    [[nodiscard]] std::size_t part_count() const noexcept { return 1 + above.size(); }
    [[nodiscard]] part& part_at(std::size_t index) noexcept { return index == 0 ? low : above[index - 1]; }
    [[nodiscard]] const part& part_at(std::size_t index) const noexcept {
        return index == 0 ? low : above[index - 1];
    }
    /// The bits that the word has in a part.
    [[nodiscard]] std::uint64_t bits_in_part(std::size_t index) const noexcept;
    [[nodiscard]] bool fits() const noexcept;
    [[nodiscard]] bool is_sign_extended() const noexcept;
    void keep_bits() noexcept;
    [[nodiscard]] bool has_mixed_hex_digit() const noexcept;

    std::uint32_t bits_of_word;
    part low;                ///< bits 0 to 63
    std::vector<part> above; ///< bits from 64 on, 64 each; empty for words of up to 64 bits
};

/// A word, or why there is none: one of the two.
struct word_result {
    std::optional<word> value;       ///< the word
    std::optional<word_fault> fault; ///< why there is none
};

} // namespace kvrimage

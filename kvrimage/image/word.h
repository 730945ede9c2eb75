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

/// The greatest width of a word, in bits.
inline constexpr std::uint32_t widest_word = 1U << 20U;

/// Why a text is no word of the requested radix and width.
struct word_fault {
    /// The kinds of faults.
    enum class kind : std::uint8_t {
        empty,                ///< the text has no digit
        invalid_digit,        ///< a character is no digit of the radix
        too_wide,             ///< the value does not fit the width
        dont_care             ///< a decimal text has a don't-care digit
    } what = kind::empty;     ///< the fault of this text
    std::size_t position = 0; ///< index of the character at fault; for too_wide, of the first significant
                              ///< digit
    std::uint64_t bits_needed = 0; ///< for too_wide, the smallest width that holds the value; else 0

    /// Compares all three members.
    friend bool operator==(const word_fault&, const word_fault&) = default;
};

struct word_result;

/// A word of 1 to widest_word bits, each 0, 1 or don't-care. This is a value type; words of up to 64 bits
/// need no allocation.
class KVRIMAGE_API word {
public:
    /// Makes the word 0 of @p width bits.
    /// @throws std::invalid_argument if @p width is 0 or above widest_word. The four functions below throw
    /// this too.
    explicit word(std::uint32_t width);

    /// Makes a word of an unsigned value.
    /// @throws std::overflow_error if @p value does not fit @p width bits
    [[nodiscard]] static word of(std::uint64_t value, std::uint32_t width);
    /// Makes a word of a signed value in two's complement.
    /// @throws std::overflow_error if @p value does not fit @p width bits
    [[nodiscard]] static word of_signed(std::int64_t value, std::uint32_t width);
    /// Parses @p text, digits in @p digits_radix with the most significant one first. Letter case and leading
    /// zeros do not matter. `dec` accepts a leading "-". "X" is a don't-care digit in binary, octal and
    /// hexadecimal.
    [[nodiscard]] static word_result parse(std::string_view text, radix digits_radix, std::uint32_t width);
    /// Makes a word of (width + 7) / 8 bytes. The surplus high bits of the most significant byte must be 0.
    /// @throws std::overflow_error if a surplus bit is not 0
    /// @throws std::invalid_argument if the number of bytes is wrong
    [[nodiscard]] static word of_bytes(std::string_view bytes, byte_order order, std::uint32_t width);

    /// Returns the width in bits.
    [[nodiscard]] std::uint32_t width() const noexcept { return bits_of_word; }
    /// True if at least one bit is don't-care.
    [[nodiscard]] bool has_dont_care() const noexcept;
    /// Returns '0', '1' or 'X'. Bit 0 is the least significant one.
    /// @throws std::out_of_range if @p index is not below width()
    [[nodiscard]] char bit(std::uint32_t index) const;

    /// Returns the unsigned value, or nothing if it needs more than 64 bits or the word has don't-care bits.
    [[nodiscard]] std::optional<std::uint64_t> to_unsigned() const noexcept;
    /// Returns the value in two's complement at the width of the word, or nothing as for to_unsigned().
    [[nodiscard]] std::optional<std::int64_t> to_signed() const noexcept;
    /// Returns the exact digits in upper case, most significant first. Binary, octal and hexadecimal have all
    /// digits of the width; decimal has no leading zeros. Returns nothing if a don't-care bit cannot be
    /// shown: in decimal, or if it shares a digit with other bits.
    [[nodiscard]] std::optional<std::string> to_text(radix digits_radix) const;
    /// Appends to_text() to @p text. Returns false and leaves @p text unchanged if to_text() returns nothing.
    bool append_text(radix digits_radix, std::string& text) const;
    /// Returns the bytes of the word, with surplus high bits 0, or nothing if the word has don't-care bits.
    [[nodiscard]] std::optional<std::string> to_bytes(byte_order order) const;

    /// Compares width and bits. A don't-care bit equals only another don't-care bit.
    friend bool operator==(const word&, const word&) = default;

    /// For internal use: conversion from and to the text that image_words stores.
    ///@{
    [[nodiscard]] static word of_held_text(std::string_view text, std::uint32_t width);
    void append_held_text(std::string& text) const;
    ///@}

private:
    struct part {
        std::uint64_t value = 0;     ///< don't-care bits are 0 here
        std::uint64_t dont_care = 0; ///< 1 for each don't-care bit
        friend bool operator==(const part&, const part&) = default;
    };

    [[nodiscard]] std::size_t part_count() const noexcept { return 1 + above.size(); }
    [[nodiscard]] part& part_at(std::size_t index) noexcept { return index == 0 ? low : above[index - 1]; }
    [[nodiscard]] const part& part_at(std::size_t index) const noexcept {
        return index == 0 ? low : above[index - 1];
    }
    /// Returns the mask of the bits that the word has in a part.
    [[nodiscard]] std::uint64_t bits_in_part(std::size_t index) const noexcept;
    [[nodiscard]] bool fits() const noexcept;
    [[nodiscard]] bool is_sign_extended() const noexcept;
    void keep_bits() noexcept;
    [[nodiscard]] bool has_mixed_hex_digit() const noexcept;

    std::uint32_t bits_of_word;
    part low;                ///< bits 0 to 63
    std::vector<part> above; ///< the bits from 64 on, 64 in each part; empty for words of up to 64 bits
};

/// A word or a fault, never both.
struct word_result {
    std::optional<word> value;       ///< the word
    std::optional<word_fault> fault; ///< the reason if there is no word
};

} // namespace kvrimage

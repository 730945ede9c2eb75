#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kvrimage {

/// A number of up to 128 bits.
struct wide_number {
    std::uint64_t low = 0;
    std::uint64_t high = 0;

    friend bool operator==(const wide_number&, const wide_number&) = default;
};

/// The greatest width of words that are processed as numbers, in bits.
inline constexpr std::uint32_t widest_number_word = 128;

/// A mapping of words to new words, in several forms that must agree.
struct word_mapping {
    std::uint32_t width; ///< width of the new words
    /// Maps any word. Both words are given as binary digits ('0', '1', 'X'), most significant first, one for
    /// each bit. May return nothing for words with don't-care bits only.
    std::function<std::optional<std::string>(std::string_view bits)> bits;
    /// Maps a word without don't-care bits if both widths are at most widest_number_word.
    std::function<wide_number(const wide_number& value)> number;
    /// Maps words of whole bytes in place, in the byte order in which they are stored, to new words of the
    /// same width. May be empty; the numbers are used instead.
    std::function<void(std::span<char> words)> bytes = {};
};

/// Applies @p mapping to each word of @p image. Words that are not set stay unset. A fill takes time
/// proportional to its pattern.
/// @throws std::domain_error for a word that the mapping rejects; what() names its address
[[nodiscard]] memory_image mapped_words(const memory_image& image, const word_mapping& mapping);

/// Parses @p digits, 1 to 32 hexadecimal digits. Returns nothing if one of them is a don't-care digit.
[[nodiscard]] std::optional<wide_number> wide_number_of(std::string_view digits) noexcept;

} // namespace kvrimage

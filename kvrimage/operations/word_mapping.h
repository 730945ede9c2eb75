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

/// The bits of words that are handled as numbers.
inline constexpr std::uint32_t widest_number_word = 128;

/// How a new word is made of each word of a memory, in forms that must agree.
struct word_mapping {
    std::uint32_t width; ///< of the new words
    /// The new word of any word, both as binary digits ('0', '1', 'X'), most significant first, as many as
    /// the word has bits. Nothing when there is none, which may be so for words with don't-care bits only.
    std::function<std::optional<std::string>(std::string_view bits)> bits;
    /// The new word of one without don't-care bits, where neither has more than widest_number_word bits.
    std::function<wide_number(const wide_number& value)> number;
    /// Makes the new words, which are as wide, in place of old ones of whole bytes that are held as bytes, in
    /// their order. May be empty: the numbers serve as well.
    std::function<void(std::span<char> words)> bytes = {};
};

/// The memory that @p mapping makes of @p image: the same addresses, and the same words not set. Words that a
/// fill has set cost its pattern.
/// @throws std::domain_error for a word of which the mapping makes none; what() names its address
[[nodiscard]] memory_image mapped_words(const memory_image& image, const word_mapping& mapping);

/// The number of @p digits, 1 to 32 hexadecimal digits; nothing when one of them is a don't-care digit.
[[nodiscard]] std::optional<wide_number> wide_number_of(std::string_view digits) noexcept;

} // namespace kvrimage

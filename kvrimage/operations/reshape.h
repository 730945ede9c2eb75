#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// In which order words follow one another in the string of all bits of a memory.
enum class bit_order : std::uint8_t {
    low_first, ///< bit 0 of the first word is the first bit: of two words that are joined, the first one
               ///< becomes the low half
    high_first ///< the highest bit of the first word is the first bit: the first word becomes the high half
};

/// The memory whose words are cut, @p width bits each, from the bits of the words of @p image in @p order.
/// Where these are too few for the last word, it lacks bits; further ones are missing where words are not
/// set. A word of which all bits are missing is not set. The base is that of @p image in words of the new
/// width.
///
/// Reshaped to the old width, the result is @p image again, apart from words that @p pad has completed, and
/// from depth and words that have become of the bits beyond its end.
///
/// What a fill has set costs its pattern, or that of the new words, which has at most as many words as the
/// old one has bits; all else costs its bits.
///
/// @param width 1 to widest_word
/// @param pad the bits to take where some of a word are missing; nothing: none may be
/// @throws std::invalid_argument for another @p width, when @p pad has another width than that, and when the
/// base is in the middle of a new word
/// @throws std::out_of_range when the memory would have more than deepest_memory words, or addresses above
/// 2^64 - 1
/// @throws std::domain_error when some bits of a word are missing and there is no @p pad; what() names the
/// first address, and says how many words they are
[[nodiscard]] KVRIMAGE_API memory_image reshaped(const memory_image& image, std::uint32_t width,
                                                 bit_order order,
                                                 const std::optional<word>& pad = std::nullopt);

} // namespace kvrimage

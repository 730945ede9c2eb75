#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// The order of words in the bit string of a memory.
enum class bit_order : std::uint8_t {
    low_first, ///< bit 0 of the first word comes first; of two joined words, the first is the low half
    high_first ///< the highest bit of the first word comes first; the first word is the high half
};

/// Regroups the bits of @p image into words of @p width bits. The words are concatenated to a bit string in
/// @p order, which is then cut into new words. Bits are missing after the end of the string and where a word
/// is not set. A new word without any bits is not set. The new base is that of @p image, converted to words
/// of the new width.
///
/// Reshaping the result back to the old width gives @p image again, except for words completed by @p pad and
/// words after the end of @p image.
///
/// A fill takes time and memory proportional to its pattern or to the new pattern, which has at most as many
/// words as the old one has bits. All other words take time proportional to their bits.
///
/// @param width width of the new words, 1 to widest_word
/// @param pad the value of missing bits, at the same positions of the word; without it no bit of a word may
/// be missing
/// @throws std::invalid_argument if @p width is out of range, if the width of @p pad differs from it, or if
/// the base lies within a new word
/// @throws std::out_of_range if the result has more than deepest_memory words, or addresses above 2^64 - 1
/// @throws std::domain_error if bits of a word are missing and there is no @p pad; what() names the first
/// address and the number of such words
[[nodiscard]] KVRIMAGE_API memory_image reshaped(const memory_image& image, std::uint32_t width,
                                                 bit_order order,
                                                 const std::optional<word>& pad = std::nullopt);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage_tests {

// Memories in each of the forms in which words are held; a word of more than 64 bits is an allocation. None
// has don't-care bits, and depths, bases and widths are multiples of 8.

/// Words of 96 bits: a fill of a pattern, a run, single ones, gaps.
[[nodiscard]] kvrimage::memory_image image_of_wide_words();
/// Words of 16 bits, all set, that stay the bytes that they were made of.
[[nodiscard]] kvrimage::memory_image image_held_as_bytes();
/// The deepest memory, over whose middle a fill reaches, with words of 16 bits at both ends.
[[nodiscard]] kvrimage::memory_image deepest_image();
/// Words of 16 bits that are all different, in more than a page.
[[nodiscard]] kvrimage::memory_image image_of_varied_words();
/// Words of 96 bits some of whose bits are don't care.
[[nodiscard]] kvrimage::memory_image image_with_dont_care();

/// The word of 96 bits that is @p number several times.
[[nodiscard]] kvrimage::word wide_word(std::uint64_t number);

} // namespace kvrimage_tests

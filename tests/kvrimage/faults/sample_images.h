#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage_tests {

// Memories in each of the forms in which words are stored. A word of more than 64 bits needs an allocation.
// None of the memories has don't-care bits, except the last. Depths, bases and widths are multiples of 8.

/// Words of 96 bits: a fill with a pattern, a run, single words, gaps.
[[nodiscard]] kvrimage::memory_image image_of_wide_words();
/// Words of 16 bits, all set, that are still stored as the original bytes.
[[nodiscard]] kvrimage::memory_image image_held_as_bytes();
/// The deepest memory, with a fill across its middle and words of 16 bits at both ends.
[[nodiscard]] kvrimage::memory_image deepest_image();
/// Words of 16 bits that are all different, more than one page.
[[nodiscard]] kvrimage::memory_image image_of_varied_words();
/// Words of 96 bits with some don't-care bits.
[[nodiscard]] kvrimage::memory_image image_with_dont_care();

/// The word of 96 bits that repeats @p number.
[[nodiscard]] kvrimage::word wide_word(std::uint64_t number);

} // namespace kvrimage_tests

#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

// Memories from address 0 on in which every word is set. Time and memory are in proportion to their bits,
// also where words repeat.

/// Words that count up from @p start by @p step, as a counter of their width does: after the highest word
/// comes the lowest one.
/// @throws std::invalid_argument when the two have different widths, or don't-care bits, and for a depth that
/// memory_image() does not take
[[nodiscard]] KVRIMAGE_API memory_image ramp(const word& start, const word& step, std::uint64_t depth);

/// Random words, the same ones on every machine and in every version: each word depends on @p seed, its
/// address and @p width alone.
///
/// A word of up to 64 bits is the lowest bits of number(address); one of more bits takes ceil(width / 64) = n
/// numbers, from number(n * address) on, the lowest bits first. With arithmetic modulo 2^64, number(i) is
///
///     z = seed + (i + 1) * 0x9E3779B97F4A7C15
///     z = (z xor (z >> 30)) * 0xBF58476D1CE4E5B9
///     z = (z xor (z >> 27)) * 0x94D049BB133111EB
///     z xor (z >> 31)
///
/// It is no generator for secrets.
/// @throws std::invalid_argument for a width or depth that memory_image() does not take
[[nodiscard]] KVRIMAGE_API memory_image random_words(std::uint32_t width, std::uint64_t depth,
                                                     std::uint64_t seed);

/// The bytes of @p text as words of @p width bits, one each.
/// @throws std::invalid_argument for an empty text, and a width that memory_image() does not take
/// @throws std::overflow_error when a byte does not fit the width; what() says which one, and its address
[[nodiscard]] KVRIMAGE_API memory_image text_words(std::string_view text, std::uint32_t width = 8);

} // namespace kvrimage

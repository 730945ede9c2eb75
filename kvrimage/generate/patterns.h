#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

// Memories from address 0 on with all words set. Time and memory are proportional to their bits, even if
// words repeat.

/// Returns words that count from @p start by @p step. They wrap around like a counter of the same width.
/// @throws std::invalid_argument if the widths of @p start and @p step differ, if one has don't-care bits, or
/// if memory_image() rejects the depth
[[nodiscard]] KVRIMAGE_API memory_image ramp(const word& start, const word& step, std::uint64_t depth);

/// Returns pseudorandom words that are the same on every machine and in every version. Each word depends on
/// @p seed, its address and @p width only.
///
/// A word of up to 64 bits has the lowest bits of number(address). A wider word consists of n = ceil(width /
/// 64) numbers from number(n * address) on, lowest bits first. With arithmetic modulo 2^64, number(i) is
///
///     z = seed + (i + 1) * 0x9E3779B97F4A7C15
///     z = (z xor (z >> 30)) * 0xBF58476D1CE4E5B9
///     z = (z xor (z >> 27)) * 0x94D049BB133111EB
///     z xor (z >> 31)
///
/// Not suitable for cryptography.
/// @throws std::invalid_argument if memory_image() rejects the width or the depth
[[nodiscard]] KVRIMAGE_API memory_image random_words(std::uint32_t width, std::uint64_t depth,
                                                     std::uint64_t seed);

/// Returns the bytes of @p text as words of @p width bits, one word for each byte.
/// @throws std::invalid_argument if @p text is empty, or if memory_image() rejects the width
/// @throws std::overflow_error if a byte does not fit the width; what() names the byte and its address
[[nodiscard]] KVRIMAGE_API memory_image text_words(std::string_view text, std::uint32_t width = 8);

} // namespace kvrimage

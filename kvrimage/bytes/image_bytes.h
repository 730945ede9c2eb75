#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

// Memories as raw bytes: the words in ascending order of addresses, (width + 7) / 8 bytes each. If the width
// is no multiple of 8, the surplus high bits of the most significant byte are 0.

/// How bytes are grouped into words.
struct byte_options {
    std::uint32_t width = 8;               ///< word width in bits, 1 to widest_word
    byte_order order = byte_order::little; ///< byte order within a word
    std::uint64_t base = 0;                ///< address of the first word
    /// Value of the bytes missing from the last word. Without it no byte may be missing.
    std::optional<std::uint8_t> pad = std::nullopt;
};

/// Returns the memory with the words of @p bytes, all set. Takes time and memory proportional to the bytes.
/// @throws std::invalid_argument if @p bytes is empty, if it ends within a word and there is no pad, or if
/// memory_image() rejects the width, depth or base
/// @throws std::overflow_error if a surplus high bit is not 0; what() names the address
[[nodiscard]] KVRIMAGE_API memory_image image_of_bytes(std::string_view bytes,
                                                       const byte_options& options = {});

/// Returns the bytes of all words of @p image. Takes time and memory proportional to the bytes, set or not.
/// @param unset the value written for words that are not set; without it all words must be set
/// @throws std::domain_error for a word with don't-care bits, and for an unset word without @p unset; what()
/// names the address of the first one
/// @throws std::invalid_argument if the width of @p unset differs from that of the memory
/// @throws std::length_error, std::bad_alloc if the bytes do not fit a string
[[nodiscard]] KVRIMAGE_API std::string bytes_of_image(const memory_image& image,
                                                      byte_order order = byte_order::little,
                                                      const std::optional<word>& unset = std::nullopt);

} // namespace kvrimage

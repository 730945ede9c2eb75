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

// Memories as bytes of 8 bits and nothing else: the words one after the other, in order of addresses, in
// (width + 7) / 8 bytes each. Where the width is no multiple of 8, the surplus high bits of the most
// significant byte are 0.

/// How bytes are made into words.
struct byte_options {
    std::uint32_t width = 8;               ///< bits a word, 1 to widest_word
    byte_order order = byte_order::little; ///< of the bytes of a word
    std::uint64_t base = 0;                ///< the address of the first word
    /// Stands for each byte that the last word lacks; nothing: it must lack none.
    std::optional<std::uint8_t> pad = std::nullopt;
};

/// The memory of @p bytes; all its words are set. Time and memory are in proportion to the bytes.
/// @throws std::invalid_argument when the bytes are none, or no whole words and there is no pad; and for a
/// width, depth, or base that memory_image() does not take
/// @throws std::overflow_error when a surplus high bit is not 0; what() names the address
[[nodiscard]] KVRIMAGE_API memory_image image_of_bytes(std::string_view bytes,
                                                       const byte_options& options = {});

/// The bytes of all words of @p image. Time and memory are in proportion to them, set or not.
/// @param unset stands for words that are not set; nothing: all must be
/// @throws std::domain_error for a word with don't-care bits, and for one that is not set when @p unset is
/// nothing; what() names the address of the first one
/// @throws std::invalid_argument when @p unset has another width than the memory
/// @throws std::length_error, std::bad_alloc when the bytes are too many for a string
[[nodiscard]] KVRIMAGE_API std::string bytes_of_image(const memory_image& image,
                                                      byte_order order = byte_order::little,
                                                      const std::optional<word>& unset = std::nullopt);

} // namespace kvrimage

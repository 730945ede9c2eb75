#pragma once

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word.h"
#include "kvrimage/operations/reshape.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// What the words of a memory become.
struct new_words {
    std::uint32_t width;
    std::uint64_t depth;
    bit_order order;
    const std::optional<word>& pad; ///< as wide
};

/// The words that reshaped() makes of @p words, as bytes: the string of all bits is one of bytes then. They
/// are those of @p words where these follow one another in it as they are.
/// @return nothing where the words are not held as bytes, or the new ones cannot be: a width is no
/// multiple of 8, the pad has don't-care bits, or a word would lack bits
[[nodiscard]] std::optional<byte_words> reshaped_bytes(const image_words& words, const new_words& made);

} // namespace kvrimage

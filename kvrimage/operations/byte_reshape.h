#pragma once

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word.h"
#include "kvrimage/operations/reshape.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// Layout of the new words of a reshaped memory.
struct new_words {
    std::uint32_t width;
    std::uint64_t depth;
    bit_order order;
    const std::optional<word>& pad; ///< of the new width
};

/// Returns the words that reshaped() makes of @p words, as bytes. The bits of whole bytes form a string of
/// bytes. The result shares the bytes of @p words if their order in this string is the same.
/// @return nothing if the words are not stored as bytes, or if the new ones cannot be: a width is no multiple
/// of 8, the pad has don't-care bits, or bits of a word are missing
[[nodiscard]] std::optional<byte_words> reshaped_bytes(const image_words& words, const new_words& made);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/operations/new_words.h"

#include <optional>

namespace kvrimage {

/// Returns the words that reshaped() makes of @p words, as bytes. The bits of whole bytes form a string of
/// bytes. The result shares the bytes of @p words if their order in this string is the same.
/// @return nothing if the words are not stored as bytes, or if the new ones cannot be: the pad has don't-care
/// bits, bits of a word are missing, or a width is no multiple of 8 and reshaped_numbers() makes no words
[[nodiscard]] std::optional<byte_words> reshaped_bytes(const image_words& words, const new_words& made);

} // namespace kvrimage

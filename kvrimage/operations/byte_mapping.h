#pragma once

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/operations/word_mapping.h"

#include <optional>

namespace kvrimage {

/// Returns the words that mapped_words() makes of @p words, as bytes in the same byte order.
/// @return nothing if the words are not stored as bytes, or if they are too wide for numbers and the mapping
/// has no form for bytes
[[nodiscard]] std::optional<byte_words> mapped_bytes(const image_words& words, const word_mapping& mapping);

} // namespace kvrimage

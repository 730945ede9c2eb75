#pragma once

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/operations/word_mapping.h"

#include <optional>

namespace kvrimage {

/// The words that mapped_words() makes of @p words, as bytes in the same order.
/// @return nothing where the words are not held as bytes, or are too wide for a mapping that has no form for
/// bytes
[[nodiscard]] std::optional<byte_words> mapped_bytes(const image_words& words, const word_mapping& mapping);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/byte_words.h"
#include "kvrimage/operations/new_words.h"

#include <optional>

namespace kvrimage {

/// Returns the words that reshaped() makes of @p held, in the same byte order.
/// @param made with a pad without don't-care bits, or without a pad
/// @return nothing if old or new words have more than 64 bits, if adjacent blocks begin within a new word, or
/// if they end within one and there is no pad
[[nodiscard]] std::optional<byte_words> reshaped_numbers(const byte_words& held, const new_words& made);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/image_words.h"

#include <cstdint>

namespace kvrimage {

/// Copies the words of @p from at the offsets @p first to @p last, inclusive, to @p to from offset @p at on.
/// Words that are not set in @p from keep their value in @p to. All offsets must exist, and both memories
/// have the same width. A fill is copied in time proportional to its pattern.
void copy_words(const image_words& from, std::uint64_t first, std::uint64_t last, image_words& to,
                std::uint64_t at);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/image_words.h"

#include <cstdint>

namespace kvrimage {

/// Sets the words of @p to from offset @p at on to those of @p from at the offsets from @p first to @p last.
/// Words that are not set in @p from are left as they are in @p to. All offsets are in their memories, whose
/// words have the same width. What a fill has set costs its pattern.
void copy_words(const image_words& from, std::uint64_t first, std::uint64_t last, image_words& to,
                std::uint64_t at);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage {

/// Returns a hash of the width, depth, addresses and words of @p image, to compare it with a memory that is
/// no longer stored. Different memories have equal fingerprints with a probability of 1 in 2^64. Takes time
/// proportional to the words that are set, even if a fill has set billions.
[[nodiscard]] std::uint64_t fingerprint_of(const memory_image& image);

} // namespace kvrimage

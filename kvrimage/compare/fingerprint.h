#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage {

/// A number for the width, the depth, the addresses and the words of @p image, by which a memory that is not
/// kept is compared: that of another memory is another one, but for a chance of 1 in 2^64. It costs a step
/// for each word that is set, also where a fill has set billions.
[[nodiscard]] std::uint64_t fingerprint_of(const memory_image& image);

} // namespace kvrimage

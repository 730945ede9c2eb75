#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage {

/// Words of a memory that are not set.
struct unset_words {
    std::uint64_t count = 0;
    std::uint64_t first = 0; ///< the lowest address of them, when there is one
};

/// The cost depends on what is set, and not on how many addresses there are.
[[nodiscard]] unset_words count_unset(const memory_image& image);

} // namespace kvrimage

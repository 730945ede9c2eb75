#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// The runs of a memory: longest stretches of neighbouring equal words that are set. A don't-care bit equals
/// a don't-care bit only.
struct run_statistics {
    std::uint64_t runs = 0;     ///< how many there are
    std::optional<run> longest; ///< the lowest one of the longest; nothing when no word is set
};

/// Time follows the words that were set one by one, not what fills cover; the memory does not grow with
/// either.
[[nodiscard]] KVRIMAGE_API run_statistics runs_of(const memory_image& image);

} // namespace kvrimage

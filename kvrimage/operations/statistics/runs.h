#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// The runs of a memory: maximal stretches of equal adjacent words that are set. A don't-care bit equals only
/// another don't-care bit.
struct run_statistics {
    std::uint64_t runs = 0;     ///< number of runs
    std::optional<run> longest; ///< the longest run; the lowest one if several are equally long; nothing if
                                ///< no word is set
};

/// Counts the runs of @p image. Takes time proportional to the words that were set one by one, not to those
/// that fills cover, and constant memory.
[[nodiscard]] KVRIMAGE_API run_statistics runs_of(const memory_image& image);

} // namespace kvrimage

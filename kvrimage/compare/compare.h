#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <functional>
#include <optional>
#include <span>

namespace kvrimage {

/// A range of addresses over which each memory repeats one word, and the two words differ.
struct difference {
    address_range addresses;   ///< the addresses
    std::optional<word> left;  ///< nothing if not set or outside the memory
    std::optional<word> right; ///< like `left`
};

/// Calls @p take with each difference in order of addresses. A word that is not set differs from 0. Words of
/// different widths are equal if their values are. Stretches that one fill set in each memory take time
/// proportional to the patterns.
KVRIMAGE_API void for_each_difference(const memory_image& left, const memory_image& right,
                                      const std::function<void(const difference&)>& take);

/// Does the same for the addresses of @p where only. The ranges are in order and apart;
/// differences are cut to them.
KVRIMAGE_API void for_each_difference(const memory_image& left, const memory_image& right,
                                      std::span<const address_range> where,
                                      const std::function<void(const difference&)>& take);

} // namespace kvrimage

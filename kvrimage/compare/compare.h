#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <functional>
#include <optional>
#include <span>

namespace kvrimage {

/// Neighbouring addresses at which two memories hold the same two words that differ.
struct difference {
    address_range addresses;   ///< in which both memories repeat one word each
    std::optional<word> left;  ///< nothing: not set, or beyond that memory
    std::optional<word> right; ///< as `left`
};

/// Calls @p take with every difference of the words, in order of addresses. An unset word is not 0, and words
/// of different widths are the same when their values are. Stretches that one fill set in both cost nothing.
KVRIMAGE_API void for_each_difference(const memory_image& left, const memory_image& right,
                                      const std::function<void(const difference&)>& take);

/// The same at the addresses of @p where only, which are in order and apart; a difference is cut to each.
KVRIMAGE_API void for_each_difference(const memory_image& left, const memory_image& right,
                                      std::span<const address_range> where,
                                      const std::function<void(const difference&)>& take);

} // namespace kvrimage

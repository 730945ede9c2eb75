#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage {

/// The smallest word widths in bits that hold every value of a memory, from 1 to its width.
struct needed_width {
    std::uint32_t as_unsigned; ///< floor(log2(value)) + 1 of the largest value
    std::uint32_t as_signed;   ///< in two's complement: N bits hold -2^(N-1) to 2^(N-1) - 1

    /// Compares both members.
    friend bool operator==(const needed_width&, const needed_width&) = default;
};

/// Returns the widths for the words of @p image that are set, or 1 for both if none is. The widths hold a
/// don't-care bit as 0 and as 1. Takes time proportional to the words that were set one by one, not to those
/// that fills cover.
[[nodiscard]] KVRIMAGE_API needed_width needed_width_of(const memory_image& image);

} // namespace kvrimage

#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>

namespace kvrimage {

/// The smallest word widths, in bits, that hold every value of a memory; at least 1, and at most the width
/// that it has.
struct needed_width {
    std::uint32_t as_unsigned; ///< floor(log2(value)) + 1 of the largest one
    std::uint32_t as_signed;   ///< in two's complement: N bits hold -2^(N-1) to 2^(N-1) - 1

    /// The same in both.
    friend bool operator==(const needed_width&, const needed_width&) = default;
};

/// Words that are not set do not count; without any set both are 1. A don't-care bit may be 0 or 1, and the
/// widths hold both. Time follows the words that were set one by one, not what fills cover.
[[nodiscard]] KVRIMAGE_API needed_width needed_width_of(const memory_image& image);

} // namespace kvrimage

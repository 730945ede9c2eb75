#pragma once

#include "kvrimage/image/word.h"
#include "kvrimage/operations/reshape.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// Layout of the new words of a reshaped memory.
struct new_words {
    std::uint32_t width;
    bit_order order;
    const std::optional<word>& pad; ///< of the new width
};

} // namespace kvrimage

#pragma once

#include "kvrimage/image/word.h"

#include <cstdint>

namespace kvrimage {

/// Neighbouring bits of a word; bit 0 is the least significant one.
struct bit_field {
    std::uint32_t high = 0; ///< its most significant bit, at least `low`
    std::uint32_t low = 0;

    [[nodiscard]] std::uint32_t width() const noexcept { return high - low + 1; }
    friend bool operator==(const bit_field&, const bit_field&) = default;
};

/// @p whole with the bits of @p value, which has the width of @p field, in @p field. All other bits stay,
/// don't-care bits too.
/// @throws std::invalid_argument when @p field does not lie in the word, or @p value has another width
[[nodiscard]] word with_field(const word& whole, const bit_field& field, const word& value);

} // namespace kvrimage

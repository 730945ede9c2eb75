#pragma once

#include "kvrimage/image/word.h"

#include <cstdint>

namespace kvrimage {

/// A field of adjacent bits of a word. Bit 0 is the least significant one.
struct bit_field {
    std::uint32_t high = 0; ///< the most significant bit, at least `low`
    std::uint32_t low = 0;

    [[nodiscard]] std::uint32_t width() const noexcept { return high - low + 1; }
    friend bool operator==(const bit_field&, const bit_field&) = default;
};

/// Returns @p whole with the bits of @p field replaced by @p value. All other bits keep their value,
/// don't-care bits included.
/// @throws std::invalid_argument if @p field exceeds the word, or the width of @p value differs from that of
/// the field
[[nodiscard]] word with_field(const word& whole, const bit_field& field, const word& value);

} // namespace kvrimage

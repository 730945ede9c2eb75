#pragma once

#include "kvrimage/image/radix.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Returns the unsigned number that @p bytes, at most 8, encode in @p order.
[[nodiscard]] constexpr std::uint64_t number_of_bytes(std::string_view bytes, byte_order order) noexcept {
    std::uint64_t number = 0;
    const auto take = [&number](char byte) { number = number << 8U | static_cast<unsigned char>(byte); };
    if (order == byte_order::big) {
        std::for_each(bytes.begin(), bytes.end(), take);
    } else {
        std::for_each(bytes.rbegin(), bytes.rend(), take);
    }
    return number;
}

} // namespace kvrimage

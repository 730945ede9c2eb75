#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace kvrimage {

/// Bytes that a word of @p width bits takes.
[[nodiscard]] constexpr std::uint32_t bytes_of_width(std::uint32_t width) {
    return (width + 7) / 8;
}

/// Calls @p take with the bytes of the words of @p image that are set, none of which has a don't-care bit, in
/// blocks of neighbouring addresses that ascend. A word at address A has the byte addresses from A *
/// bytes_of_width() on, its bytes in @p order, the surplus high bits 0. A block is valid during the call, and
/// may be of any size.
void for_each_byte_block(const memory_image& image, byte_order order,
                         const std::function<void(std::uint64_t address, std::string_view bytes)>& take);

} // namespace kvrimage

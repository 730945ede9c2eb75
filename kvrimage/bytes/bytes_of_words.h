#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace kvrimage {

/// Returns the number of bytes of a word of @p width bits.
[[nodiscard]] constexpr std::uint32_t bytes_of_width(std::uint32_t width) {
    return (width + 7) / 8;
}

/// Calls @p take with the bytes of all words of @p image that are set, in blocks of consecutive ascending
/// addresses. No word may have don't-care bits. The word at address A begins at byte address A *
/// bytes_of_width(). Its bytes are in @p order, with surplus high bits 0. A block has any size and is valid
/// during the call only.
void for_each_byte_block(const memory_image& image, byte_order order,
                         const std::function<void(std::uint64_t address, std::string_view bytes)>& take);

} // namespace kvrimage

#pragma once

#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

/// A memory of the hexadecimal words @p texts, starting at @p base.
[[nodiscard]] kvrimage::memory_image
image_of_hex(std::uint32_t width, const std::vector<std::string_view>& texts, std::uint64_t base = 0);

} // namespace kvrimage_tests

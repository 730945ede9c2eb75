#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

// What modules that hold a memory have in common in all languages.

/// Bits of the address input, at least 1.
[[nodiscard]] std::uint32_t address_bits(const memory_image& image);

/// Adds a diagnostic to @p found when an array of @p language cannot have so many words.
void refuse_source_depth(const memory_image& image, std::string_view language,
                         std::vector<diagnostic>& found);

} // namespace kvrimage

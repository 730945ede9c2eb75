#pragma once

#include "kvrimage/generate/pixel_format.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace kvrimage::svg {

/// Returns a PNG image as a data URL: "data:image/png;base64,...". Gaps are transparent. The image is not
/// compressed: a pixel takes 16/3 characters, and a row 4/3 more.
/// @param pixels whole rows of @p columns pixels, at least one row
[[nodiscard]] std::string png_url(std::span<const std::optional<color>> pixels, std::uint32_t columns);

} // namespace kvrimage::svg

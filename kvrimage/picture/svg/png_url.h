#pragma once

#include "kvrimage/generate/pixel_format.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace kvrimage::svg {

/// A picture in PNG as a URL that holds it: "data:image/png;base64,...". Gaps are transparent. It is not
/// compressed: a pixel takes 16/3 characters, and each row 4/3 more.
/// @param pixels whole rows of @p columns, at least one
[[nodiscard]] std::string png_url(std::span<const std::optional<color>> pixels, std::uint32_t columns);

} // namespace kvrimage::svg

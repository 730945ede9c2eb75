#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"

#include <vector>

namespace kvrimage {

/// Why @p image cannot be written in the format of the options, by what that format says of itself: words
/// that are not set or have don't-care bits, the order of bytes that is missing. Without what the format
/// finds itself.
[[nodiscard]] std::vector<diagnostic> general_obstacles(const memory_image& image,
                                                        const write_options& options);

} // namespace kvrimage

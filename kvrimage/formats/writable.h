#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"

#include <vector>

namespace kvrimage {

/// Returns why @p image cannot be written in the format of the options, judged by the properties of the
/// format: unset words, don't-care bits, or a missing byte order. Obstacles that only the format itself can
/// find are not included.
[[nodiscard]] std::vector<diagnostic> general_obstacles(const memory_image& image,
                                                        const write_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/memory_image.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Returns the optional comment at the start of a file, with its line end: "// 16 words of 8 bits".
[[nodiscard]] std::string readmem_banner(const memory_image& image);

/// Returns whether readmem_banner() makes the comment at @p where in @p contents.
[[nodiscard]] bool is_readmem_banner(std::string_view contents, const span& where);

} // namespace kvrimage

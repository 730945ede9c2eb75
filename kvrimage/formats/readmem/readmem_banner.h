#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/memory_image.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// The comment that a file begins with where that is wanted: "// 16 words of 8 bits", with its line end.
[[nodiscard]] std::string readmem_banner(const memory_image& image);

/// True when the comment at @p where of @p contents is one that readmem_banner() makes.
[[nodiscard]] bool is_readmem_banner(std::string_view contents, const span& where);

} // namespace kvrimage

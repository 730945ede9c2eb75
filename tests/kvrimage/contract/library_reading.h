#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string>
#include <string_view>

namespace kvrimage_tests {

/// How the library kvr differs from @p ours in its reading of @p contents, in words; "" when it reads the
/// same words at the same addresses. Formats that it does not know read alike. A depth in @p options is ours
/// alone.
[[nodiscard]] std::string how_the_library_differs(std::string_view contents, const kvrimage::format& as,
                                                  const kvrimage::memory_image& ours,
                                                  const kvrimage::read_options& options,
                                                  std::optional<kvrimage::radix> our_radix);

} // namespace kvrimage_tests

#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string>
#include <string_view>

namespace kvrimage_tests {

/// Describes how the library kvr reads @p contents differently from @p ours; "" if it reads the same words at
/// the same addresses, or does not know the format. A depth in @p options applies only to @p ours.
[[nodiscard]] std::string how_the_library_differs(std::string_view contents, const kvrimage::format& as,
                                                  const kvrimage::memory_image& ours,
                                                  const kvrimage::read_options& options,
                                                  std::optional<kvrimage::radix> our_radix);

} // namespace kvrimage_tests

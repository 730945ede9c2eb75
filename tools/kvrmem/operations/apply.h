#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/operations/operation.h"

#include <span>
#include <string>
#include <vector>

namespace kvrmem {

/// Applies @p operations to @p image in order. Returns a line about each.
/// @param name of the file of @p image, for messages
/// @throws tool_error that begins with the title of the operation: wrong usage if it does not fit the memory,
/// bad input if it does not fit a word
[[nodiscard]] std::vector<std::string> apply(std::span<const operation> operations,
                                             kvrimage::memory_image& image, const std::string& name);

} // namespace kvrmem

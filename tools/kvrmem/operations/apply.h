#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/operations/operation.h"

#include <span>
#include <string>
#include <vector>

namespace kvrmem {

/// Makes @p operations on @p image, one after the other; a line on each, which says what it did.
/// @param name of the file that @p image is from, for messages
/// @throws tool_error that begins with the title of the operation: wrong usage where it does not suit the
/// memory, bad input where it does not suit a word
[[nodiscard]] std::vector<std::string> apply(std::span<const operation> operations,
                                             kvrimage::memory_image& image, const std::string& name);

} // namespace kvrmem

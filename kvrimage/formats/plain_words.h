#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/image/memory_image.h"

#include <string_view>
#include <vector>

namespace kvrimage {

// Obstacles to writing words one after the other without addresses.

/// Adds a diagnostic to @p found if the lowest address of @p image is not 0. @p target names the output in
/// the message.
void refuse_base(const memory_image& image, std::string_view target, std::vector<diagnostic>& found);

/// Adds a diagnostic if a word below the last set word is unset, or if no word is set.
void refuse_gaps(const memory_image& image, std::string_view target, std::vector<diagnostic>& found);

} // namespace kvrimage

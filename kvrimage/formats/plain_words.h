#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/image/memory_image.h"

#include <string_view>
#include <vector>

namespace kvrimage {

// Why words cannot be written one after the other, without their addresses.

/// Adds a diagnostic to @p found when the lowest address of @p image is not 0. @p target is what is to be
/// written, for the message.
void refuse_base(const memory_image& image, std::string_view target, std::vector<diagnostic>& found);

/// Adds one when a word before the last one that is set is not set, or none is.
void refuse_gaps(const memory_image& image, std::string_view target, std::vector<diagnostic>& found);

} // namespace kvrimage

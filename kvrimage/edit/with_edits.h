#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/export.h"

#include <span>
#include <string>

namespace kvrimage {

/// Returns @p contents with @p edits, which must be in order and must not overlap.
[[nodiscard]] KVRIMAGE_API std::string with_edits(std::string contents, std::span<const text_edit> edits);

} // namespace kvrimage

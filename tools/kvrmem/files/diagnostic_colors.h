#pragma once

#include "kvrimage/diagnostics/diagnostic_text.h"
#include "tools/kvrmem/platform/terminal.h"

#include <cstdio>

namespace kvrmem {

/// Returns the painter for diagnostics on @p stream; empty if it has no colors.
[[nodiscard]] kvrimage::text_painter diagnostic_painter(std::FILE* stream, color_choice choice);

} // namespace kvrmem

#pragma once

#include "kvrimage/diagnostics/diagnostic_text.h"
#include "tools/kvrmem/platform/terminal.h"

#include <cstdio>

namespace kvrmem {

/// The colours of diagnostics on @p stream; none where it is to have none.
[[nodiscard]] kvrimage::text_painter diagnostic_painter(std::FILE* stream, color_choice choice);

} // namespace kvrmem

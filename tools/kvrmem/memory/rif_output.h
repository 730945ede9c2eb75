#pragma once

#include "tools/kvrmem/memory/memory_output.h"

namespace kvrmem {

/// Writes @p image as RIF: eight words a line, an address line before each of these and behind every gap.
void write_rif(const memory_image& image, kvr::output_file& output);

} // namespace kvrmem

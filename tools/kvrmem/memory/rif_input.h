#pragma once

#include "tools/kvrmem/memory/memory_input.h"

namespace kvrmem {

/// read_memory() for RIF. Without a width it is that of the digits of the longest word.
[[nodiscard]] memory_image read_rif(const input_file& file, const input_options& options);

/// line_that_sets() for RIF.
[[nodiscard]] std::uint64_t rif_line_that_sets(const input_file& file, std::uint32_t address);

} // namespace kvrmem

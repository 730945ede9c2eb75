#pragma once

#include "tools/kvrmem/memory/memory_input.h"

namespace kvrmem {

/// read_memory() for MIF.
[[nodiscard]] memory_image read_mif(const input_file& file, const input_options& options);

/// line_that_sets() for MIF.
[[nodiscard]] std::uint64_t mif_line_that_sets(const input_file& file, std::uint32_t address);

} // namespace kvrmem

#pragma once

#include "tools/kvrmem/memory/memory_input.h"

namespace kvrmem {

/// read_memory() for Intel HEX. Each word takes a whole number of bytes; a record holds whole words.
/// Without a width it is taken from the records: the bytes from one address to the next.
[[nodiscard]] memory_image read_hex(const input_file& file, const input_options& options);

/// line_that_sets() for Intel HEX.
[[nodiscard]] std::uint64_t hex_line_that_sets(const input_file& file, const input_options& options,
                                               std::uint32_t address);

} // namespace kvrmem

#pragma once

#include "tools/kvrmem/memory/memory_output.h"

#include <string_view>

namespace kvrmem {

/// What write_mif() begins with: a comment that names the tool.
inline constexpr std::string_view mif_first_line = "-- Memory Initialization File, written by kvrmem";

/// @throws tool_error when @p image is too deep for a MIF, or its words too wide for a line of one.
void require_writable_mif(const memory_image& image, const output_layout& layout);

/// Writes @p image as MIF: neighbours with equal words share a line if @p layout says so.
void write_mif(const memory_image& image, const output_layout& layout, kvr::output_file& output);

} // namespace kvrmem

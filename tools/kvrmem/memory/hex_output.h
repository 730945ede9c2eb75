#pragma once

#include "tools/kvrmem/memory/memory_output.h"

namespace kvrmem {

/// @throws tool_error when a word of @p image does not fit a record.
void require_writable_hex(const memory_image& image);

/// Writes @p image, which holds no don't-care digit, as Intel HEX: one word a record, addresses count words.
void write_hex(const memory_image& image, kvr::output_file& output);

} // namespace kvrmem

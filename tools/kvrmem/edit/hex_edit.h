#pragma once

#include "tools/kvrmem/edit/file_edit.h"
#include "tools/kvrmem/memory/memory_image.h"

#include <string_view>
#include <vector>

namespace kvrmem {

/// What changes in @p text, an Intel HEX file that read_memory() has read as @p image, for @p pieces to be in
/// it. The digits of a word are replaced in the last record that sets it, and the checksum of that record;
/// words that no record sets get records before the end record.
/// @throws tool_error (wrong usage) for words that Intel HEX cannot hold.
[[nodiscard]] std::vector<text_change> hex_changes(std::string_view text, const memory_image& image,
                                                   edit_pieces pieces);

} // namespace kvrmem

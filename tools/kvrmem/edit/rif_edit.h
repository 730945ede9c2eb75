#pragma once

#include "tools/kvrmem/edit/file_edit.h"
#include "tools/kvrmem/memory/memory_image.h"

#include <string_view>
#include <vector>

namespace kvrmem {

/// What changes in @p text, a RIF file that read_memory() has read as @p image, for @p pieces to be in it. A
/// word is replaced where it stands (where it stands last, if it does so twice); words that the file does not
/// set go to its end, behind address lines.
/// @throws tool_error (wrong usage) for words that RIF cannot show.
[[nodiscard]] std::vector<text_change> rif_changes(std::string_view text, const memory_image& image,
                                                   edit_pieces pieces);

} // namespace kvrmem

#pragma once

#include "tools/kvrmem/edit/file_edit.h"
#include "tools/kvrmem/memory/memory_image.h"

#include <string_view>
#include <vector>

namespace kvrmem {

/// What changes in @p text, a MIF file that read_memory() has read as @p image, for @p pieces to be in it.
/// Words that are there already change nothing. A single word is replaced where it stands; a range line is
/// taken apart into lines for what stays and what is new; words that no line sets get lines before "END;".
/// @throws tool_error (wrong usage) for a word that the file's radix cannot show.
[[nodiscard]] std::vector<text_change> mif_changes(std::string_view text, const memory_image& image,
                                                   edit_pieces pieces);

} // namespace kvrmem

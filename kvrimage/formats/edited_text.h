#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// Writes @p contents with @p edits, which are in order and do not overlap, piece by piece.
void write_edited(std::string_view contents, std::span<const text_edit> edits, text_sink& output);

/// Makes @p edits, which are in order and do not overlap, in the first @p size bytes of @p room, which is as
/// large as the longer of the old and the new text, and returns the size of the new one.
std::size_t edit_in_place(std::span<char> room, std::size_t size, std::span<const text_edit> edits);

/// The edits of all fixes of @p found that can be made at once, in order: a fix is taken as a whole or not at
/// all, and of two that touch each other the one of the earlier diagnostic. @p taken (as many as @p found) is
/// set to which ones are.
[[nodiscard]] std::vector<text_edit> fixes_at_once(std::span<const diagnostic> found,
                                                   std::vector<bool>& taken);

} // namespace kvrimage

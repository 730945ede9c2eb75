#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/exchange/text_sink.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// Writes @p contents with @p edits, which must be in order and must not overlap.
void write_edited(std::string_view contents, std::span<const text_edit> edits, text_sink& output);

/// Applies @p edits, in order and without overlaps, to the first @p size bytes of @p room and returns the new
/// size. @p room must hold the longer of the old and the new text.
std::size_t edit_in_place(std::span<char> room, std::size_t size, std::span<const text_edit> edits);

/// Returns the edits of all fixes of @p found that can be applied together, in order. A fix is applied
/// completely or not at all; of two fixes that touch, the one of the earlier diagnostic is applied. @p taken
/// gets one entry for each diagnostic: whether its fix is applied.
[[nodiscard]] std::vector<text_edit> fixes_at_once(std::span<const diagnostic> found,
                                                   std::vector<bool>& taken);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// Returns the edits that set the words of @p assignments in @p contents, a MIF read as @p ours. The assigned
/// words have the width of the memory; equal words cause no edit. A single word is replaced in place, a range
/// is split into statements for old and new words, and words that no statement sets get lines before END.
/// Diagnostics report why there are no edits: an address beyond the memory, a word that the data radix cannot
/// represent, a line too long for the library kvr, or a file of unknown memory size.
[[nodiscard]] edit_result edit_mif(std::string_view contents, const read_options& options,
                                   const read_result& ours, std::span<const assignment> assignments);

} // namespace kvrimage

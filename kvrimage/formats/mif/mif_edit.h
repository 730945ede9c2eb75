#pragma once

#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// The edits that make @p contents, a MIF that was read as @p ours, hold the words of @p assignments, which
/// have the width of the memory. Words that are there already change nothing. A single word is replaced where
/// it stands; a range is split into statements for what stays and what is new; words that no statement sets
/// get lines before END. The diagnostics say why there are no edits: an address beyond the memory, a word
/// that the data radix cannot show, a line that would become too long for the library kvr, or a file whose
/// memory is not known.
[[nodiscard]] edit_result edit_mif(std::string_view contents, const read_options& options,
                                   const read_result& ours, std::span<const assignment> assignments);

} // namespace kvrimage

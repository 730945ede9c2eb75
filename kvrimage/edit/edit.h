#pragma once

#include "kvrimage/export.h"
#include "kvrimage/formats/format.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// The edits that make a file hold new words, with its comments and its layout as they are: with_edits()
/// makes them. A word within a range gets a line of its own, and so does one that was not set; checksums are
/// put right. There are no edits when the words are as they are to be already.
///
/// Where a file does not say by itself how wide its words are, or what its addresses count, the new words may
/// let it be read otherwise: then read it with the width and the unit that parse() found before.
///
/// @param contents of the file
/// @param assignments of two for one address the later counts; an address beyond the last word makes the
/// memory deeper where neither the file nor @p options say its depth
/// @param options as for parse(), but a broken file is never edited; with a base the addresses of @p
/// assignments count from it, as those of the words that parse() finds do
/// @return diagnostics, all of class broken, when parse() finds the file broken, or it cannot hold the words
/// @throws std::invalid_argument when the format cannot be edited, an assignment has no word or one of
/// another width than the file, or its range ends before it begins
[[nodiscard]] KVRIMAGE_API edit_result edit(std::string_view contents,
                                            std::span<const assignment> assignments,
                                            const read_options& options = {});

} // namespace kvrimage

#pragma once

#include "kvrimage/exchange/assignment.h"
#include "kvrimage/exchange/read_options.h"
#include "kvrimage/export.h"

#include <span>
#include <string_view>

namespace kvrimage {

/// Computes the edits by which a file gets new words; with_edits() applies them. Comments and layout are
/// preserved. A word within a range, or one that was not set, gets a line of its own. Checksums are updated.
/// There are no edits if the file already has the words.
///
/// If a file does not declare its word width or address unit, the new words may change how it is interpreted.
/// Parse the result with the width and unit that parse() found before.
///
/// @param contents of the file
/// @param assignments the new words; of two for one address the later one wins. An address beyond the last
/// word increases the depth, unless the file or @p options determine it
/// @param options as for parse(), but a broken file is never edited. With a base, the addresses of
/// @p assignments count from it, like those of the words that parse() returns
/// @return the edits, or diagnostics of class broken if the file is broken or cannot hold the words
/// @throws std::invalid_argument if the format cannot be edited, if an assignment has no word or a word of
/// another width than the file, or if its range ends before it begins
[[nodiscard]] KVRIMAGE_API edit_result edit(std::string_view contents,
                                            std::span<const assignment> assignments,
                                            const read_options& options = {});

} // namespace kvrimage

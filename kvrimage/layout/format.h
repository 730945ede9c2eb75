#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/export.h"
#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// A file in the canonical layout of its format, or why there is none.
struct formatted_text {
    std::string text;                    ///< the whole file; "" when there are diagnostics
    std::vector<diagnostic> diagnostics; ///< all of class broken; none when the file could be laid out
};

/// A file in the canonical layout of its format: columns, letter case, leading zeros, blank lines. It holds
/// the same words at the same addresses and the same comments in the same order, blanks at the ends of
/// comment lines aside, and its line ends are those of the first line. What is laid out already comes back as
/// it is.
///
/// Where a file does not say by itself how its addresses count or how wide its words are, read both texts
/// with the same options.
///
/// @param contents of the file
/// @param options as for parse(), but a broken file is never laid out
/// @throws std::invalid_argument when the format has no rules (format::lay_out)
/// @throws std::logic_error when the layout, read again, does not hold the same words: a mistake in the rules
[[nodiscard]] KVRIMAGE_API formatted_text format_text(std::string_view contents,
                                                      const read_options& options = {});

/// The same for a file that was read already.
///
/// @param read what parse() gives for @p contents and @p options, with an image
/// @throws what the other one does
[[nodiscard]] KVRIMAGE_API std::string format_text(std::string_view contents, const read_options& options,
                                                   const read_result& read);

} // namespace kvrimage

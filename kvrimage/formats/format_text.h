#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/exchange/read_options.h"
#include "kvrimage/exchange/read_result.h"
#include "kvrimage/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// A file in the canonical layout, or the reason why there is none.
struct formatted_text {
    std::string text;                    ///< the whole file; "" if there are diagnostics
    std::vector<diagnostic> diagnostics; ///< all of class broken; empty on success
};

/// Returns a file in the canonical layout of its format: columns, letter case, leading zeros and blank lines.
/// It has the same words at the same addresses, and the same comments in the same order; only blanks at the
/// ends of comment lines are dropped. All line ends become those of the first line. Formatting a formatted
/// file changes nothing.
///
/// If a file does not declare its address unit or word width, parse both texts with the same options.
///
/// @param contents of the file
/// @param options as for parse(), but a broken file is never formatted
/// @throws std::invalid_argument if the format has no layout rules (format::lay_out)
/// @throws std::logic_error if the result, parsed again, has other words: a bug in the rules
[[nodiscard]] KVRIMAGE_API formatted_text format_text(std::string_view contents,
                                                      const read_options& options = {});

/// Does the same for a file that was already parsed.
///
/// @param read the result of parse() for @p contents and @p options; it must have an image
/// Throws like the function above.
[[nodiscard]] KVRIMAGE_API std::string format_text(std::string_view contents, const read_options& options,
                                                   const read_result& read);

} // namespace kvrimage

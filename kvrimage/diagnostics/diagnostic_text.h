#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/export.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kvrimage {

/// What a piece of the text of a diagnostic is, for those who colour it.
enum class text_part : std::uint8_t {
    place,         ///< "boot.mif:7:5:"
    error_level,   ///< "error:", "error for kvr:"
    warning_level, ///< "warning:"
    mark           ///< "^~~~"
};

/// Returns @p text with what colours it around it.
using text_painter = std::function<std::string(text_part part, std::string_view text)>;

/// "error" for broken, "error for kvr" for what the consumer kvr does not take, "warning" for suspect.
[[nodiscard]] KVRIMAGE_API std::string level_of(const diagnostic& found);

/// @p found for people, with a line end after each line:
///
///     boot.mif:7:5: error: value 1FF needs 9 bits, the words have 8
///       0 : 1FF;
///           ^~~
///       also in lines 8, 9, 10 and 49996 more places
///       hint: needs WIDTH 9
///
/// Control characters and what is no UTF-8 are escaped, "\x00", and long lines are cut around the mark.
///
/// @param name of the file, as it is to be shown
/// @param contents of the file; "" leaves the line and the mark out
/// @param paint colours the pieces; none: plain text
[[nodiscard]] KVRIMAGE_API std::string diagnostic_text(const diagnostic& found, std::string_view name,
                                                       std::string_view contents,
                                                       const text_painter& paint = {});

} // namespace kvrimage

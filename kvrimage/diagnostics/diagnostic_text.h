#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/export.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kvrimage {

/// The parts of a diagnostic's text that can be colored.
enum class text_part : std::uint8_t {
    place,         ///< "boot.mif:7:5:"
    error_level,   ///< "error:", "error for kvr:"
    warning_level, ///< "warning:"
    mark           ///< "^~~~"
};

/// Returns @p text enclosed in the color codes of @p part.
using text_painter = std::function<std::string(text_part part, std::string_view text)>;

/// Returns "error" for class broken, "error for kvr" for the consumer kvr, "warning" for class suspect.
[[nodiscard]] KVRIMAGE_API std::string level_of(const diagnostic& found);

/// Formats @p found for the terminal. Each line ends with LF:
///
///     boot.mif:7:5: error: value 1FF needs 9 bits, the words have 8
///       0 : 1FF;
///           ^~~
///       also in lines 8, 9, 10 and 49996 more places
///       hint: needs WIDTH 9
///
/// Control characters and invalid UTF-8 are escaped ("\x00"). Long lines are cut around the mark.
///
/// @param name file name to show
/// @param contents contents of the file; "" omits the line and the mark
/// @param paint colors the parts; if empty, the text is plain
[[nodiscard]] KVRIMAGE_API std::string diagnostic_text(const diagnostic& found, std::string_view name,
                                                       std::string_view contents,
                                                       const text_painter& paint = {});

} // namespace kvrimage

#pragma once

#include "kvrimage/diagnostics/diagnostic.h"

#include <string>
#include <vector>

namespace kvrimage {

/// "bad-digit 2:5+1" each: code, line, column and length, and "x3" after it for several places.
[[nodiscard]] std::vector<std::string> shown(const std::vector<diagnostic>& diagnostics);

/// What read_rif() finds in @p contents.
[[nodiscard]] std::vector<std::string> rif_diagnostics_of(std::string_view contents);

/// @p contents after the fixes of all diagnostics that read_rif() finds.
[[nodiscard]] std::string repaired_rif(std::string_view contents);

/// @p contents with @p edits.
[[nodiscard]] std::string with_text_edits(std::string contents, const std::vector<text_edit>& edits);

} // namespace kvrimage

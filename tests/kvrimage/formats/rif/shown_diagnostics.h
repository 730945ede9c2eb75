#pragma once

#include "kvrimage/diagnostics/diagnostic.h"

#include <string>
#include <vector>

namespace kvrimage {

/// "bad-digit 2:5+1" for each diagnostic: code, line, column and length, followed by "x3" for three places.
[[nodiscard]] std::vector<std::string> shown(const std::vector<diagnostic>& diagnostics);

/// The diagnostics of read_rif() for @p contents.
[[nodiscard]] std::vector<std::string> rif_diagnostics_of(std::string_view contents);

/// @p contents after the repairs of all diagnostics of read_rif().
[[nodiscard]] std::string repaired_rif(std::string_view contents);

/// @p contents with @p edits.
[[nodiscard]] std::string with_text_edits(std::string contents, const std::vector<text_edit>& edits);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// The format that the user gave, or the one that the extension of @p path says.
/// @param given null where the user gave none
/// @throws tool_error (wrong usage), naming @p option ("--from"), when neither says it
[[nodiscard]] const kvrimage::format& format_for(const kvrimage::format* given, const std::string& path,
                                                 std::string_view option);

/// @throws tool_error (wrong usage) when neither the user nor the extension of @p path says the format, and
/// @p contents are not certainly of one; and when it cannot be read
void require_known_format(const kvrimage::format* given, const std::string& path, std::string_view contents);

/// Reports, as a note on standard error, when no format with the extension of @p path is @p written, in which
/// it was written.
void note_other_extension(const std::string& path, const kvrimage::format& written);

} // namespace kvrmem

#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// Returns the format given by the user, else the one for the extension of @p path.
/// @param given null if the user gave none
/// @throws tool_error (wrong usage), naming @p option ("--from"), if the format is unknown
[[nodiscard]] const kvrimage::format& format_for(const kvrimage::format* given, const std::string& path,
                                                 std::string_view option);

/// @throws tool_error (wrong usage) if neither the user nor the extension of @p path states the format and
/// the contents are not certain, or if the format cannot be read
void require_known_format(const kvrimage::format* given, const std::string& path, std::string_view contents);

/// Notes on standard error that the extension of @p path belongs to other formats than @p written, the format
/// of the output.
void note_other_extension(const std::string& path, const kvrimage::format& written);

} // namespace kvrmem

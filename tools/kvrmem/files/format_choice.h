#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// The format that the user gave, or the one that the extension of @p path says.
/// @param given null where the user gave none
/// @param contents of the file, for the hint; "" when there are none
/// @throws tool_error (wrong usage), naming @p option ("--from"), when neither says it
[[nodiscard]] const kvrimage::format& format_for(const kvrimage::format* given, const std::string& path,
                                                 std::string_view option, std::string_view contents = {});

/// Reports, as a note on standard error, when the extension of @p path, which was written as @p written, says
/// that it is something else.
void note_other_extension(const std::string& path, const kvrimage::format& written);

} // namespace kvrmem

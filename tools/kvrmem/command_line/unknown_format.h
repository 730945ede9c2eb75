#pragma once

#include "tools/kvrmem/command_line/option_table.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// Returns the format for a name or extension @p name used by other tools ("hex32"), ignoring letter case;
/// null for other names.
[[nodiscard]] const kvrimage::format* format_meant_by(std::string_view name);

/// Does the same for the text after the last dot of @p path.
[[nodiscard]] const kvrimage::format* format_meant_by_extension(std::string_view path);

/// Rejects @p name, an unknown value of --from or --to. The message suggests the format that the name or the
/// contents of the input suggest, and a command line.
/// @param given the rest of the command line
/// @throws tool_error (wrong usage) always
[[noreturn]] void refuse_format_name(std::string_view option, const std::string& name,
                                     const arguments& given);

} // namespace kvrmem

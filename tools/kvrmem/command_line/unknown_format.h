#pragma once

#include "tools/kvrmem/command_line/option_table.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// The format that other tools call @p name, "hex32", or that has this extension there; letter case ignored.
/// Null for other names.
[[nodiscard]] const kvrimage::format* format_meant_by(std::string_view name);

/// The same for what follows the last dot of @p path.
[[nodiscard]] const kvrimage::format* format_meant_by_extension(std::string_view path);

/// Refuses @p name, the value of --from or --to, for which there is no format, with what the contents of the
/// input look like, or which format is meant, and the command line to try.
/// @param given all of the command line beside this option
/// @throws tool_error (wrong usage) always
[[noreturn]] void refuse_format_name(std::string_view option, const std::string& name,
                                     const arguments& given);

} // namespace kvrmem

#pragma once

#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <cstddef>
#include <span>
#include <string>

namespace kvrmem {

/// A command of the tool.
struct command {
    const char* name;
    const char* operands;    ///< for the usage line
    const char* summary;     ///< one line
    const char* examples;    ///< lines for the help, each "  $ …"
    const char* description; ///< paragraphs for the help and the manual page, lines of at most 80 characters
    std::size_t least_files; ///< minimum number of operands
    std::size_t most_files;
    std::span<const option_id> options;
    exit_code (*run)(const arguments&); ///< returns success or negative; throws tool_error otherwise
};

/// Any number of operands.
constexpr std::size_t any_number = static_cast<std::size_t>(-1);

[[nodiscard]] bool takes(const command& which, option_id option) noexcept;

/// Parses the words after the command's name. A word such as "-5" is an operand, not an option.
/// @throws tool_error (wrong usage) for unknown options, invalid values, too few or too many operands
[[nodiscard]] arguments parse_arguments(const command& which, int count, char** words);

} // namespace kvrmem

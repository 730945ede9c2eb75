#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <span>
#include <string>
#include <string_view>

namespace kvrmem {

extern const command check_command;
extern const command convert_command;
extern const command diff_command;
extern const command dump_command;
extern const command fill_command;
extern const command format_command;
extern const command formats_command;
extern const command get_command;
extern const command info_command;
extern const command join_command;
extern const command lsp_command;
extern const command merge_command;
extern const command new_command;
extern const command plot_command;
extern const command radix_command;
extern const command set_command;
extern const command split_command;
extern const command sum_command;

/// Returns all commands in the order of the help.
[[nodiscard]] std::span<const command* const> all_commands() noexcept;

[[nodiscard]] bool is_command(std::string_view name) noexcept;

/// Returns the command with the name @p words[0].
/// @param words the command line from the name on
/// @param other_words other valid names, for the suggestion
/// @throws tool_error (wrong usage) with a suggestion, if there is no such command
[[nodiscard]] const command& find_command(std::span<const std::string> words,
                                          std::span<const std::string_view> other_words = {});

} // namespace kvrmem

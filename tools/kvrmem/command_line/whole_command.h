#pragma once

#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/command_line/command_line.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// @p word as a shell takes it.
[[nodiscard]] std::string shell_word(const std::string& word);

/// The command line of @p given with the options @p added ("--width 32") after the command's name, ready to
/// be copied; what it says of these itself is left out. "" where the command does not take one of them, or a
/// file is a standard stream, which cannot be read again.
[[nodiscard]] std::string command_with(const arguments& given, std::span<const std::string> added);

/// @p given with the options @p added ("--width 32", "--address-unit byte --endian little") as well; those
/// that the command does not take are left out.
/// @throws tool_error (wrong usage) when one does not go with the others
[[nodiscard]] arguments with_options(arguments given, std::span<const std::string> added);

/// The addresses that @p given asks for: by options, or as operands that are no files.
[[nodiscard]] std::vector<kvrimage::address_range> asked_addresses(const arguments& given);

/// The same as command_with() for a command line that was not understood: @p words, the name of the command
/// first, with @p wrong, one of them (or the front of one, up to its "="), as @p right.
[[nodiscard]] std::string command_with_replaced(std::span<const std::string> words, std::string_view wrong,
                                                std::string_view right);

/// What users call an option of @p which by another name, "--bits" for "--width", maybe with its value
/// ("--endian little"); nothing for other names.
[[nodiscard]] std::optional<std::string_view> option_meant_by(const command& which, std::string_view given);

} // namespace kvrmem

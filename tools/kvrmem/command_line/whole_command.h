#pragma once

#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/command_line/command_line.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// Returns @p word quoted for a shell.
[[nodiscard]] std::string shell_word(const std::string& word);

/// Returns the command line of @p given, ready to be copied, with the options @p added ("--width 32") after
/// the command's name; they replace the same options in @p given. "" if the command does not accept one of
/// them, or if a file is a standard stream, which cannot be read again.
[[nodiscard]] std::string command_with(const arguments& given, std::span<const std::string> added);

/// Returns @p given with the options @p added ("--width 32", "--address-unit byte --endian little"). Options
/// that the command does not accept are ignored.
/// @throws tool_error (wrong usage) if an option conflicts with others
[[nodiscard]] arguments with_options(arguments given, std::span<const std::string> added);

/// Returns the addresses in @p given: in options, or as operands that are not files.
[[nodiscard]] std::vector<kvrimage::address_range> asked_addresses(const arguments& given);

/// Returns the command line like command_with(), for an invalid command line @p words, which begins with the
/// name of the command. @p wrong, one of the words or the part of one before its "=", is replaced by
/// @p right.
[[nodiscard]] std::string command_with_replaced(std::span<const std::string> words, std::string_view wrong,
                                                std::string_view right);

/// Returns the option of @p which for the name @p given used by other tools ("--bits" for "--width"),
/// possibly with its value ("--endian little"); nothing for other names.
[[nodiscard]] std::optional<std::string_view> option_meant_by(const command& which, std::string_view given);

} // namespace kvrmem

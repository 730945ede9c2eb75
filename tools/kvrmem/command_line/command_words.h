#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// A first word of the command line other than a command.
struct program_word {
    std::string_view name;  ///< including its hyphens
    std::string_view value; ///< the manual page's name for the following word; "" if there is none
    std::string choices;    ///< possible following words, separated by blanks
    std::string_view help;
};

/// Returns these words in the order of the manual page.
[[nodiscard]] std::vector<program_word> program_words();

/// Returns the names of the commands in the order of the help, separated by blanks.
[[nodiscard]] std::string command_names();

/// Returns the options of @p which in the order of the help.
[[nodiscard]] std::vector<const option_entry*> options_of(const command& which);

/// Returns whether the value of @p entry is a file path.
[[nodiscard]] bool is_path_option(const option_entry& entry) noexcept;

/// The operands of a command.
struct operand_words {
    std::size_t paths = 0; ///< number of leading operands that are file paths, or any_number
    std::string others;    ///< text of the usage line for the other operands; "" if there are none
};

[[nodiscard]] operand_words operands_of(const command& which);

/// Returns the spellings of an option: "-o" and "--output", or the long name only.
[[nodiscard]] std::vector<std::string> spellings_of(const option_entry& entry);

/// Returns @p text with each @p what replaced by @p with.
[[nodiscard]] std::string replaced(std::string text, std::string_view what, std::string_view with);

/// Breaks @p text at blanks into lines of at most @p columns characters. No word may be longer.
[[nodiscard]] std::string wrapped(std::string text, std::size_t columns);

} // namespace kvrmem

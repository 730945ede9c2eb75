#pragma once

#include "tools/kvrmem/command_line/command_line.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

/// A first word of the command line that is no command.
struct program_word {
    std::string_view name;  ///< with its hyphens
    std::string_view value; ///< what the manual page calls the word that follows; "" when none does
    std::string choices;    ///< the words that may follow, separated by blanks
    std::string_view help;
};

/// In the order in which the manual page shows them.
[[nodiscard]] std::vector<program_word> program_words();

/// The names of the commands in the order of the help, separated by blanks.
[[nodiscard]] std::string command_names();

/// The options of @p which, in the order of the help.
[[nodiscard]] std::vector<const option_entry*> options_of(const command& which);

/// Whether the value of @p entry is the path of a file.
[[nodiscard]] bool is_path_option(const option_entry& entry) noexcept;

/// The operands of a command.
struct operand_words {
    std::size_t paths = 0; ///< how many of them are paths of files, from the first on; or any_number
    std::string others;    ///< the usage line's text for what follows those; "" where nothing may
};

[[nodiscard]] operand_words operands_of(const command& which);

/// "-o" and "--output"; without a letter, only the name.
[[nodiscard]] std::vector<std::string> spellings_of(const option_entry& entry);

/// @p text with @p with in the place of each @p what.
[[nodiscard]] std::string replaced(std::string text, std::string_view what, std::string_view with);

/// @p text in lines of at most @p columns characters, broken at blanks; no word of it is longer.
[[nodiscard]] std::string wrapped(std::string text, std::size_t columns);

} // namespace kvrmem

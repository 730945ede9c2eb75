#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kvrmem {

/// What to use instead of a command that other tools have and this one has not, "show", as the rest of a
/// sentence: "dump shows ...; try: kvrmem dump boot.mif". Where the other words do not fit the command that
/// is meant, the help of that command takes the place of the line to try. "" for a name that nobody uses.
/// @param words the command line from the name of the command on; the name alone where its help was asked for
[[nodiscard]] std::string advice_on_other_command(std::span<const std::string> words);

} // namespace kvrmem

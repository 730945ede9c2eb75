#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kvrmem {

/// Returns the replacement for a command of other tools ("show") as the end of a sentence: "dump shows ...;
/// try: kvrmem dump boot.mif". If the other words do not fit the replacement, its help is suggested. "" for
/// unknown names.
/// @param words the command line from the command's name on; only the name if its help was requested
[[nodiscard]] std::string advice_on_other_command(std::span<const std::string> words);

} // namespace kvrmem

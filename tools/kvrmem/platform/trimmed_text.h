#pragma once

#include <string_view>

namespace kvrmem {

/// Returns @p text without the characters of @p blanks at its ends. An empty result also points into @p text.
[[nodiscard]] inline std::string_view trimmed(std::string_view text, std::string_view blanks = " \t") {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? text.substr(text.size())
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace kvrmem

#pragma once

#include <algorithm>
#include <string_view>

namespace kvrmem {

/// @p text without the blanks, tabs and CRs at both ends.
[[nodiscard]] inline std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

} // namespace kvrmem

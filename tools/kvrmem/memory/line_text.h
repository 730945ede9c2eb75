#pragma once

#include "kvr/memory/mif/mif_line.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kvrmem {

/// @p text without the @p blanks at both ends.
[[nodiscard]] inline std::string_view trimmed(std::string_view text,
                                              std::string_view blanks = " \t\r") noexcept {
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// @p text with its ASCII letters in upper case.
[[nodiscard]] inline std::string upper_case(std::string_view text) {
    std::string upper(text);
    kvr::to_upper(upper);
    return upper;
}

} // namespace kvrmem

#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrmem {

/// "1 word", "2 words", "0 words": @p noun forms its plural with an "s".
[[nodiscard]] inline std::string counted(std::uint64_t count, std::string_view noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

/// "is" for one thing, "are" for any other number of them.
[[nodiscard]] constexpr std::string_view is_or_are(std::uint64_t count) noexcept {
    return count == 1 ? "is" : "are";
}

} // namespace kvrmem

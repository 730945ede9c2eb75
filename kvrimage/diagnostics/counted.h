#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// "1 word", "2 words", "0 words": @p noun forms its plural with an "s".
[[nodiscard]] inline std::string counted(std::uint64_t count, std::string_view noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

} // namespace kvrimage

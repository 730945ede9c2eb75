#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

/// Returns the count with its noun: "0 words", "1 word", "2 words". The plural of @p noun ends with "s".
[[nodiscard]] inline std::string counted(std::uint64_t count, std::string_view noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

} // namespace kvrimage

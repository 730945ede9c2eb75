#pragma once

#include "kvrimage/diagnostics/counted.h"

#include <cstdint>
#include <string_view>

namespace kvrmem {

using kvrimage::counted;

/// "is" for one thing, "are" for any other number of them.
[[nodiscard]] constexpr std::string_view is_or_are(std::uint64_t count) noexcept {
    return count == 1 ? "is" : "are";
}

} // namespace kvrmem

#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/diagnostics/span.h"

#include <algorithm>
#include <string_view>

namespace kvrimage {

/// Returns @p where with its line and column in @p contents.
[[nodiscard]] inline place line_place(std::string_view contents, const span& where) {
    const std::string_view before = contents.substr(0, where.offset);
    const auto lines_before = static_cast<std::uint64_t>(std::ranges::count(before, '\n'));
    return {lines_before + 1, before.size() - (before.rfind('\n') + 1) + 1, where.offset, where.length};
}

} // namespace kvrimage

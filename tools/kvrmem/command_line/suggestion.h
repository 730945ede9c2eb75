#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kvrmem {

/// Returns the entry of @p known most similar to @p given, with at most a third of its letters mistyped; ""
/// if there is none.
[[nodiscard]] std::string nearest_of(std::string_view given, std::span<const std::string_view> known);

} // namespace kvrmem

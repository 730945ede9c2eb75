#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kvrmem {

/// The one of @p known that @p given most likely means: mistyped by at most a third of its letters. "" when
/// there is none.
[[nodiscard]] std::string nearest_of(std::string_view given, std::span<const std::string_view> known);

} // namespace kvrmem

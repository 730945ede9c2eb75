#pragma once

#include <string_view>

namespace kvrmem {

/// True when a part of the PNG file @p contents, a chunk, does not have the check that follows it, or when no
/// part is the last one. The decoder does not look at these checks. What comes after the last part is left
/// alone.
[[nodiscard]] bool has_damaged_chunk(std::string_view contents);

} // namespace kvrmem

#pragma once

#include <cstdint>

namespace kvr {

/// Number of adjacent addresses in a page.
inline constexpr std::uint32_t page_words = 1024;

} // namespace kvr

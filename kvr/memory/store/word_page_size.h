#pragma once

#include <cstdint>

namespace kvr {

/// Words are kept in pages of this many adjacent addresses.
inline constexpr std::uint32_t page_words = 1024;

} // namespace kvr

#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string>

namespace kvrmem {

/// Returns "word", "byte" or, for words of several bytes, "byte (4 a word, little-endian)".
[[nodiscard]] std::string unit_title(kvrimage::address_unit unit, std::uint32_t width,
                                     const std::optional<kvrimage::byte_order>& order);

} // namespace kvrmem

#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::read for COE. A missing width is that of the longest word.
[[nodiscard]] read_result read_coe(std::string_view contents, const read_options& options);

/// Returns the radix for a value of memory_initialization_radix; nothing if it is invalid.
[[nodiscard]] std::optional<radix> coe_radix_of(std::string_view value) noexcept;

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <optional>
#include <string_view>

namespace kvrimage {

/// format::read() for COE. Without a width it is that of the longest word.
[[nodiscard]] read_result read_coe(std::string_view contents, const read_options& options);

/// The radix that @p value of memory_initialization_radix stands for; nothing when it is none.
[[nodiscard]] std::optional<radix> coe_radix_of(std::string_view value) noexcept;

} // namespace kvrimage

#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Returns the first word of @p contents for @p address.
[[nodiscard]] std::optional<span> first_rif_word(std::string_view contents, std::uint64_t address);

/// Implements format::find_word for RIF: returns the last word for @p address.
[[nodiscard]] std::optional<place> find_rif_word(std::string_view contents, const read_options& options,
                                                 std::uint64_t address);

} // namespace kvrimage

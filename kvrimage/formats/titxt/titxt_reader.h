#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::read for TI-TXT. Addresses count bytes.
[[nodiscard]] read_result read_titxt(std::string_view contents, const read_options& options);

/// Implements format::find_word for TI-TXT.
[[nodiscard]] std::optional<place> find_titxt_word(std::string_view contents, const read_options& options,
                                                   std::uint64_t address);

/// Implements format::sniff for TI-TXT. Certain only if @p head is a whole file.
[[nodiscard]] certainty sniff_titxt(std::string_view head);

} // namespace kvrimage

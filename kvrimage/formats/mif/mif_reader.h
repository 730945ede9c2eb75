#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

/// Selects the fast path for regular lines. It does not change the result.
enum class mif_fast_path : std::uint8_t { used, unused };

/// Implements format::read for MIF.
[[nodiscard]] read_result read_mif(std::string_view contents, const read_options& options,
                                   mif_fast_path path = mif_fast_path::used);

/// Implements format::find_word for MIF.
[[nodiscard]] std::optional<place> find_mif_word(std::string_view contents, const read_options& options,
                                                 std::uint64_t address);

/// Implements format::sniff for MIF.
[[nodiscard]] certainty sniff_mif(std::string_view head);

} // namespace kvrimage

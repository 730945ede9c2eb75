#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::sniff for CSV: likely if the first row names an address and a value.
[[nodiscard]] certainty sniff_csv(std::string_view head);

/// Implements format::find_word for CSV.
[[nodiscard]] std::optional<place> find_csv_word(std::string_view contents, const read_options& options,
                                                 std::uint64_t address);

/// Implements format::find_pieces for CSV.
void find_csv_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                     const piece_taker& take);

} // namespace kvrimage

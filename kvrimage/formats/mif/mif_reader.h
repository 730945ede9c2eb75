#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

/// Whether regular lines may take the fast path; the result is the same.
enum class mif_fast_path : std::uint8_t { used, unused };

/// The memory that @p contents hold, and what is wrong with them. See format::read().
[[nodiscard]] read_result read_mif(std::string_view contents, const read_options& options,
                                   mif_fast_path path = mif_fast_path::used);

/// See format::find_word().
[[nodiscard]] std::optional<place> find_mif_word(std::string_view contents, const read_options& options,
                                                 std::uint64_t address);

/// See format::sniff().
[[nodiscard]] certainty sniff_mif(std::string_view head);

} // namespace kvrimage

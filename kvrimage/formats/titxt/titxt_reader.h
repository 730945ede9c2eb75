#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// format::read for TI-TXT: addresses count bytes.
[[nodiscard]] read_result read_titxt(std::string_view contents, const read_options& options);

/// format::find_word for TI-TXT.
[[nodiscard]] std::optional<place> find_titxt_word(std::string_view contents, const read_options& options,
                                                   std::uint64_t address);

/// format::sniff for TI-TXT: certain only of a whole file.
[[nodiscard]] certainty sniff_titxt(std::string_view head);

} // namespace kvrimage

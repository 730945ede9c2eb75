#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::sniff for memory files with a header.
[[nodiscard]] certainty sniff_memheader(std::string_view head);

/// Implements format::find_word for memory files with a header.
[[nodiscard]] std::optional<place> find_memheader_word(std::string_view contents, const read_options& options,
                                                       std::uint64_t address);

} // namespace kvrimage

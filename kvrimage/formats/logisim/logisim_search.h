#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::sniff for Logisim files.
[[nodiscard]] certainty sniff_logisim(std::string_view head);

/// Returns the last word, run or byte at the file address @p address.
[[nodiscard]] std::optional<span> find_in_logisim(std::string_view contents, std::uint64_t address);

/// Implements format::find_word for Logisim files.
[[nodiscard]] std::optional<place> find_logisim_word(std::string_view contents, const read_options& options,
                                                     std::uint64_t address);

/// Implements format::find_comments for Logisim files.
void find_logisim_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage

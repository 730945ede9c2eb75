#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::sniff for COE.
[[nodiscard]] certainty sniff_coe(std::string_view head);

/// Implements format::find_word for COE.
[[nodiscard]] std::optional<place> find_coe_word(std::string_view contents, const read_options& options,
                                                 std::uint64_t address);

/// Implements format::find_comments for COE.
void find_coe_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::read for S-records. Addresses count bytes.
[[nodiscard]] read_result read_srec(std::string_view contents, const read_options& options);

/// Implements format::find_word for S-records.
[[nodiscard]] std::optional<place> find_srec_word(std::string_view contents, const read_options& options,
                                                  std::uint64_t address);

/// Implements format::find_comments for S-records: lines that are not records.
void find_srec_comments(std::string_view contents, const std::function<void(const span&)>& take);

/// Implements format::sniff for S-records.
[[nodiscard]] certainty sniff_srec(std::string_view head);

} // namespace kvrimage

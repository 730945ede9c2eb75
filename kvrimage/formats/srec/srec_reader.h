#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// format::read for S-records: addresses count bytes.
[[nodiscard]] read_result read_srec(std::string_view contents, const read_options& options);

/// format::find_word for S-records.
[[nodiscard]] std::optional<place> find_srec_word(std::string_view contents, const read_options& options,
                                                  std::uint64_t address);

/// format::find_comments for S-records: lines that are no records.
void find_srec_comments(std::string_view contents, const std::function<void(const span&)>& take);

/// format::sniff for S-records.
[[nodiscard]] certainty sniff_srec(std::string_view head);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Implements format::read for Intel HEX. Each word has whole bytes, and a record has whole words. Addresses
/// count words unless the options state bytes. A missing width is determined from the records.
[[nodiscard]] read_result read_hex(std::string_view contents, const read_options& options);

/// Implements format::find_word for Intel HEX.
[[nodiscard]] std::optional<place> find_hex_word(std::string_view contents, const read_options& options,
                                                 std::uint64_t address);

/// The same for files whose addresses always count bytes.
[[nodiscard]] read_result read_hexbytes(std::string_view contents, const read_options& options);
[[nodiscard]] std::optional<place> find_hexbytes_word(std::string_view contents, const read_options& options,
                                                      std::uint64_t address);

/// Implements format::sniff for Intel HEX.
[[nodiscard]] certainty sniff_hex(std::string_view head);

} // namespace kvrimage

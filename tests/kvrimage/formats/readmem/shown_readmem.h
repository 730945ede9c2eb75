#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// "8 bits, 3 words: 00 - 0F"; "none" without an image.
[[nodiscard]] std::string shown_image(const read_result& result);

/// The diagnostics of read_readmemh(): see shown().
[[nodiscard]] std::vector<std::string> readmemh_diagnostics_of(std::string_view contents,
                                                               const read_options& options = {});
[[nodiscard]] std::vector<std::string> readmemb_diagnostics_of(std::string_view contents,
                                                               const read_options& options = {});

/// Options with a width in bits.
[[nodiscard]] read_options with_bits(std::uint32_t width);
/// Options for byte addresses.
[[nodiscard]] read_options counting_bytes(std::optional<std::uint32_t> width);

} // namespace kvrimage

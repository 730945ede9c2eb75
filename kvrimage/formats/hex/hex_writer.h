#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for Intel HEX. Rejects words of more than 255 bytes, don't-care bits and
/// addresses of more than 32 bits.
[[nodiscard]] std::vector<diagnostic> can_write_hex(const memory_image& image, const write_options& options);

/// Implements format::write for Intel HEX: one word per record, word addresses, unset words omitted.
void write_hex(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for Intel HEX; exact.
[[nodiscard]] std::uint64_t size_of_hex(const memory_image& image, const write_options& options);

} // namespace kvrimage

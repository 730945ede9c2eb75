#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for TI-TXT. Byte addresses have at most 32 bits.
[[nodiscard]] std::vector<diagnostic> can_write_titxt(const memory_image& image,
                                                      const write_options& options);

/// Implements format::write for TI-TXT: 16 bytes per line, an address before each contiguous block. Unset
/// words are omitted.
void write_titxt(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for TI-TXT.
[[nodiscard]] std::uint64_t size_of_titxt(const memory_image& image, const write_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// format::can_write for TI-TXT: byte addresses have 32 bits.
[[nodiscard]] std::vector<diagnostic> can_write_titxt(const memory_image& image,
                                                      const write_options& options);

/// format::write for TI-TXT: 16 bytes a line, an address before each stretch. Words that are not set are left
/// out.
void write_titxt(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size for TI-TXT.
[[nodiscard]] std::uint64_t size_of_titxt(const memory_image& image, const write_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for memory files with a header.
[[nodiscard]] std::vector<diagnostic> can_write_memheader(const memory_image& image,
                                                          const write_options& options);

/// Implements format::write for memory files with a header: binary digits if the data radix is binary, else
/// hexadecimal ones; with addresses if a word is unset.
void write_memheader(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for memory files with a header.
[[nodiscard]] std::uint64_t written_memheader_size(const memory_image& image, const write_options& options);

} // namespace kvrimage

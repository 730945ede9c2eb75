#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// format::can_write() for memory files with a header.
[[nodiscard]] std::vector<diagnostic> can_write_memheader(const memory_image& image,
                                                          const write_options& options);

/// format::write() for memory files with a header: binary digits where the data radix is binary, else
/// hexadecimal ones, with addresses where a word is not set.
void write_memheader(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size() for memory files with a header.
[[nodiscard]] std::uint64_t written_memheader_size(const memory_image& image, const write_options& options);

} // namespace kvrimage

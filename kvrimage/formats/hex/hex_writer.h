#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// format::can_write for Intel HEX: words of more than 255 bytes, don't-care bits and addresses of more than
/// 32 bits cannot be written.
[[nodiscard]] std::vector<diagnostic> can_write_hex(const memory_image& image, const write_options& options);

/// format::write for Intel HEX: one word a record, addresses count words, words that are not set are left
/// out.
void write_hex(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size for Intel HEX; exact.
[[nodiscard]] std::uint64_t size_of_hex(const memory_image& image, const write_options& options);

} // namespace kvrimage

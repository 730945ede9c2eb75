#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// format::can_write for Intel HEX with byte addresses, which have 32 bits at most.
[[nodiscard]] std::vector<diagnostic> can_write_hexbytes(const memory_image& image,
                                                         const write_options& options);

/// format::write for Intel HEX with byte addresses: records of 16 bytes, or of what the options say, in pages
/// of 64 KiB; words that are not set are left out.
void write_hexbytes(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size for Intel HEX with byte addresses.
[[nodiscard]] std::uint64_t size_of_hexbytes(const memory_image& image, const write_options& options);

} // namespace kvrimage

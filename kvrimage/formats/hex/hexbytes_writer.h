#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for Intel HEX with byte addresses of at most 32 bits.
[[nodiscard]] std::vector<diagnostic> can_write_hexbytes(const memory_image& image,
                                                         const write_options& options);

/// Implements format::write for Intel HEX with byte addresses: records of 16 bytes or of the size in the
/// options, in pages of 64 KiB, unset words omitted.
void write_hexbytes(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for Intel HEX with byte addresses.
[[nodiscard]] std::uint64_t size_of_hexbytes(const memory_image& image, const write_options& options);

} // namespace kvrimage

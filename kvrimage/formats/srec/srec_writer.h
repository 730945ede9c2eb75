#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for S-records. Byte addresses have at most 32 bits.
[[nodiscard]] std::vector<diagnostic> can_write_srec(const memory_image& image, const write_options& options);

/// Implements format::write for S-records: a header without text, data records of the type required by the
/// highest address, their count, and a last record with the start address (default 0). Unset words are
/// omitted.
void write_srec(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for S-records; exact.
[[nodiscard]] std::uint64_t size_of_srec(const memory_image& image, const write_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// format::can_write for S-records: byte addresses have 32 bits at most.
[[nodiscard]] std::vector<diagnostic> can_write_srec(const memory_image& image, const write_options& options);

/// format::write for S-records: a header without text, data records of the type that the highest address
/// needs, their number, and the last record with the start address, or 0. Words that are not set are left
/// out.
void write_srec(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size for S-records; exact.
[[nodiscard]] std::uint64_t size_of_srec(const memory_image& image, const write_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// format::can_write() for RIF.
[[nodiscard]] std::vector<diagnostic> can_write_rif(const memory_image& image, const write_options& options);

/// format::write() for RIF: eight words a line, an address line before each of these and after every gap.
void write_rif(const memory_image& image, const write_options& options, text_sink& output);

/// format::written_size() for RIF.
[[nodiscard]] std::uint64_t written_rif_size(const memory_image& image, const write_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for RIF.
[[nodiscard]] std::vector<diagnostic> can_write_rif(const memory_image& image, const write_options& options);

/// Implements format::write for RIF: eight words per line, each line and each word after a gap preceded by an
/// address line.
void write_rif(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for RIF.
[[nodiscard]] std::uint64_t written_rif_size(const memory_image& image, const write_options& options);

} // namespace kvrimage

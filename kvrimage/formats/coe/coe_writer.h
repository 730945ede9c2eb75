#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// Implements format::can_write for COE.
[[nodiscard]] std::vector<diagnostic> can_write_coe(const memory_image& image, const write_options& options);

/// Implements format::write for COE: in the radix of the options (signed decimal as unsigned, octal as
/// hexadecimal), one word per line.
void write_coe(const memory_image& image, const write_options& options, text_sink& output);

/// Implements format::written_size for COE.
[[nodiscard]] std::uint64_t written_coe_size(const memory_image& image, const write_options& options);

} // namespace kvrimage

#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/formats/source/source_name.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

// Common parts of memory modules in all languages.

/// Returns the width of the address input in bits, at least 1.
[[nodiscard]] std::uint32_t address_bits(const memory_image& image);

/// Implements format::can_write for a language with naming @p rules: rejects invalid names and memories with
/// more words than an array can have.
[[nodiscard]] std::vector<diagnostic> can_write_module(const memory_image& image,
                                                       const write_options& options, const naming& rules);

} // namespace kvrimage

#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/formats/source/source_name.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

// What modules that hold a memory have in common in all languages.

/// Bits of the address input, at least 1.
[[nodiscard]] std::uint32_t address_bits(const memory_image& image);

/// format::can_write() for a language with @p rules for names: a name that is not possible, and more words
/// than an array can have.
[[nodiscard]] std::vector<diagnostic> can_write_module(const memory_image& image,
                                                       const write_options& options, const naming& rules);

} // namespace kvrimage

#pragma once

#include "tools/kvrmem/memory/memory_output.h"

#include <cstdint>

namespace kvrmem {

/// How many words of @p words are set.
[[nodiscard]] std::uint64_t count_set_words(const kvr::word_store& words);

/// How many bytes write_memory() would write, but for one in a hundred and the lines around the words. The
/// cost follows what the file of the image spells out, not what would be written.
[[nodiscard]] std::uint64_t estimated_output_size(const memory_image& image, const output_layout& layout);

} // namespace kvrmem

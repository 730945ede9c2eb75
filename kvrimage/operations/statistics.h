#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// What the words of a memory look like. Words that are not set do not count.
struct word_statistics {
    std::uint64_t set = 0;
    std::uint64_t runs = 0;     ///< stretches of neighbouring equal words
    std::uint64_t distinct = 0; ///< different words
    std::optional<word> most_frequent; ///< of equally frequent ones the one that was met first
    std::uint64_t most_frequent_count = 0;
};

/// The cost follows what was set one by one, not what fills and ranges cover.
[[nodiscard]] KVRIMAGE_API word_statistics count_words(const memory_image& image);

} // namespace kvrimage

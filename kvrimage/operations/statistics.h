#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// What the words of a memory look like. Words that are not set do not count.
struct word_statistics {
    std::uint64_t set = 0;      ///< words that are set
    std::uint64_t runs = 0;     ///< stretches of neighbouring equal words
    std::uint64_t distinct = 0; ///< different words
    /// Of equally frequent ones the one that reaches its count first, going up the addresses: the one whose
    /// last place is the lowest. Nothing when no word is set.
    std::optional<word> most_frequent;
    std::uint64_t most_frequent_count = 0; ///< how many words equal it; 0 when no word is set
};

/// Time and memory follow the words that were set one by one, not what fills cover; the memory, the distinct
/// ones of them.
[[nodiscard]] KVRIMAGE_API word_statistics count_words(const memory_image& image);

} // namespace kvrimage

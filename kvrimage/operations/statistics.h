#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstdint>
#include <optional>

namespace kvrimage {

/// Statistics of the words of a memory. Words that are not set do not count.
struct word_statistics {
    std::uint64_t set = 0;      ///< number of words that are set
    std::uint64_t runs = 0;     ///< number of runs of equal adjacent words
    std::uint64_t distinct = 0; ///< number of distinct words
    /// The most frequent word, or nothing if no word is set. Among equally frequent words it is the one whose
    /// last occurrence has the lowest address.
    std::optional<word> most_frequent;
    std::uint64_t most_frequent_count = 0; ///< its count; 0 if no word is set
};

/// Counts the words of @p image. Takes time proportional to the words that were set one by one, not to those
/// that fills cover, and memory proportional to the distinct ones.
[[nodiscard]] KVRIMAGE_API word_statistics count_words(const memory_image& image);

} // namespace kvrimage

#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// A word, and how many words of a memory equal it.
struct counted_word {
    word value;          ///< what words hold
    std::uint64_t count; ///< how many words hold it

    /// The same in both.
    friend bool operator==(const counted_word&, const counted_word&) = default;
};

/// How often each word of a memory occurs. Words that are not set do not count; a word with don't-care bits
/// is one of its own, which equals only those with the same bits.
struct word_histogram {
    std::uint64_t set = 0;      ///< words that are set
    std::uint64_t distinct = 0; ///< different ones of them
    /// The most frequent ones, in order. Of equally frequent ones that comes first whose last place is the
    /// lowest.
    std::vector<counted_word> most_frequent;
    /// Shannon's entropy of a word that is picked at random, in bits: the sum over all different words of
    /// p * log2(1 / p), with p the share of the word. 0 when all are equal or none is set, at most
    /// log2(distinct). (C. E. Shannon, "A Mathematical Theory of Communication", 1948, section 6.) It does
    /// not depend on the order of the words, to the last bit.
    double entropy = 0;
};

/// @param most how many of the most frequent words are wanted
///
/// Time and memory follow the words that were set one by one, not what fills cover; the memory, the distinct
/// ones of them.
[[nodiscard]] KVRIMAGE_API word_histogram histogram_of(const memory_image& image, std::size_t most);

} // namespace kvrimage

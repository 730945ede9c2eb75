#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// A word and its count in a memory.
struct counted_word {
    word value;          ///< the word
    std::uint64_t count; ///< number of words with this value

    /// Compares both members.
    friend bool operator==(const counted_word&, const counted_word&) = default;
};

/// The frequencies of the words of a memory. Words that are not set do not count. A word with don't-care bits
/// equals only a word with the same bits.
struct word_histogram {
    std::uint64_t set = 0;      ///< number of words that are set
    std::uint64_t distinct = 0; ///< number of distinct words
    /// The most frequent words, most frequent first. Among equally frequent words, the one whose last
    /// occurrence has the lowest address comes first.
    std::vector<counted_word> most_frequent;
    /// Shannon entropy of a random word in bits: the sum of p * log2(1 / p) over all distinct words, with p
    /// the relative frequency. It is 0 if all words are equal or none is set, and at most log2(distinct). (C.
    /// E. Shannon, "A Mathematical Theory of Communication", 1948, section 6.) The value does not depend on
    /// the order of the words, to the last bit.
    double entropy = 0;
};

/// Counts how often each word occurs. Takes time proportional to the words that were set one by one, not to
/// those that fills cover, and memory proportional to the distinct ones.
///
/// @param most the number of most frequent words to return
[[nodiscard]] KVRIMAGE_API word_histogram histogram_of(const memory_image& image, std::size_t most);

} // namespace kvrimage

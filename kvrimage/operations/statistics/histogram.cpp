#include "kvrimage/operations/statistics/histogram.h"

#include "kvrimage/operations/statistics/word_counts.h"
#include "kvrimage/operations/statistics/word_walk.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace kvrimage {

namespace {

/// Keeps the most frequent words.
class frequent_words {
public:
    explicit frequent_words(std::size_t most_kept) : most(most_kept) {}

    void take(const distinct_word& one) {
        if (kept.size() == most) {
            if (most == 0 || !is_more_frequent(one, kept.front())) {
                return;
            }
            std::ranges::pop_heap(kept, is_more_frequent);
            kept.pop_back();
        }
        kept.push_back(one);
        std::ranges::push_heap(kept, is_more_frequent);
    }

    [[nodiscard]] std::vector<counted_word> in_order(std::uint32_t width) {
        std::ranges::sort_heap(kept, is_more_frequent);
        std::vector<counted_word> words;
        for (const distinct_word& one : kept) {
            words.push_back({one.made(width), one.count});
        }
        return words;
    }

private:
    std::size_t most;
    std::vector<distinct_word> kept; ///< a heap with the least frequent word at the front
};

/// @param words_by_count count -> number of distinct words with this count
double entropy_of(const std::map<std::uint64_t, std::uint64_t>& words_by_count, std::uint64_t all) {
    double entropy = 0;
    for (const auto& [count, words] : words_by_count) {
        const double share = static_cast<double>(count) / static_cast<double>(all);
        const double bits = std::log2(static_cast<double>(all) / static_cast<double>(count));
        entropy += static_cast<double>(words) * share * bits;
    }
    return entropy;
}

} // namespace

word_histogram histogram_of(const memory_image& image, std::size_t most) {
    const image_words& words = image.words();
    word_counts counts;
    for_each_word_or_turn(
        words,
        [&counts](std::string_view text, std::uint64_t /*offset*/, std::uint64_t length) {
            if (!text.empty()) {
                counts.add(text, length);
            }
        },
        [&](std::uint64_t offset, std::uint32_t period, std::uint64_t turns) {
            for (std::uint32_t index = 0; index < period; ++index) {
                counts.add(words[offset + index], turns);
            }
        });
    word_histogram histogram;
    frequent_words frequent(most);
    std::map<std::uint64_t, std::uint64_t> words_by_count;
    counts.for_each([&](const distinct_word& one) {
        histogram.set += one.count;
        ++histogram.distinct;
        ++words_by_count[one.count];
        frequent.take(one);
    });
    histogram.most_frequent = frequent.in_order(image.width());
    histogram.entropy = entropy_of(words_by_count, histogram.set);
    return histogram;
}

} // namespace kvrimage

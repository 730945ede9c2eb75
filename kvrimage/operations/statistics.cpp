#include "kvrimage/operations/statistics.h"

#include "kvrimage/operations/statistics/run_counter.h"
#include "kvrimage/operations/statistics/word_counts.h"
#include "kvrimage/operations/statistics/word_walk.h"

namespace kvrimage {

word_statistics count_words(const memory_image& image) {
    const image_words& words = image.words();
    word_counts counts;
    run_counter runs(words);
    for_each_word_or_turn(
        words,
        [&](std::string_view text, std::uint64_t offset, std::uint64_t length) {
            runs.take(text, offset, length);
            if (!text.empty()) {
                counts.add(text, length);
            }
        },
        [&](std::uint64_t offset, std::uint32_t period, std::uint64_t turns) {
            runs.add_turns(offset, period, turns);
            for (std::uint32_t index = 0; index < period; ++index) {
                counts.add(words[offset + index], turns);
            }
        });
    word_statistics statistics;
    statistics.runs = runs.count();
    distinct_word most;
    counts.for_each([&](const distinct_word& one) {
        statistics.set += one.count;
        ++statistics.distinct;
        most = is_more_frequent(one, most) ? one : most;
    });
    if (most.count != 0) {
        statistics.most_frequent = most.made(image.width());
        statistics.most_frequent_count = most.count;
    }
    return statistics;
}

} // namespace kvrimage

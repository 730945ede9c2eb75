#pragma once

#include "kvrimage/image/image_words.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Counts the runs of words that for_each_word_or_turn() delivers and keeps the longest one. Its texts are
/// views of the memory.
class run_counter {
public:
    explicit run_counter(const image_words& counted) : words(counted) {}

    void take(std::string_view text, std::uint64_t offset, std::uint64_t length);
    void add_turns(std::uint64_t offset, std::uint32_t period, std::uint64_t turns);

    /// Returns the number of runs of words that are set.
    [[nodiscard]] std::uint64_t count() const noexcept { return runs; }
    /// Returns the first of the longest runs. Its text is "" if there is none.
    [[nodiscard]] const text_run& longest() const noexcept { return best; }

private:
    void keep_longest();

    const image_words& words;
    std::uint64_t runs = 0;
    text_run current = {0, 0, ""};
    text_run best = {0, 0, ""};
};

} // namespace kvrimage

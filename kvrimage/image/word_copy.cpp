#include "kvrimage/image/word_copy.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/work_position.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace kvrimage {

namespace {

class word_copier {
public:
    word_copier(const image_words& source, image_words& target) : from(source), to(target), cycles(source) {}

    /// Copies at least one word from @p first on, but none after @p last. Returns the number of words copied
    /// or skipped.
    std::uint64_t copy_some(std::uint64_t first, std::uint64_t last, std::uint64_t at) {
        const std::uint64_t most = last - first + 1;
        if (const kvr::word_row row = from.row_at(first); row.count != 0) {
            return copy_row(row, std::min(most, words_in_half(at)), at);
        }
        if (const auto cycle = cycles.find(first)) {
            return copy_cycle(*cycle, std::min(most, cycle->length()), at);
        }
        const text_run run = from.run_at(first);
        const std::uint64_t count = std::min(most, length_of(run));
        if (!run.text.empty()) {
            to.fill(at, at + count - 1, {run.text});
        }
        return count;
    }

private:
    /// Returns the number of offsets from @p at to the end of its half.
    static std::uint64_t words_in_half(std::uint64_t at) {
        return image_words::half() - at % image_words::half();
    }
    std::uint64_t copy_row(const kvr::word_row& row, std::uint64_t most, std::uint64_t at) {
        const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(row.count, most));
        to.set_side_by_side(at, row.part(0, count).all(), row.length);
        return count;
    }
    std::uint64_t copy_cycle(const text_cycle& cycle, std::uint64_t count, std::uint64_t at) {
        std::vector<std::string_view> pattern;
        for (std::uint64_t index = 0; index < std::min<std::uint64_t>(cycle.period, count); ++index) {
            pattern.push_back(from[cycle.first + index]);
        }
        to.fill(at, at + count - 1, pattern);
        return count;
    }

    const image_words& from;
    image_words& to;
    cycle_finder cycles;
};

} // namespace

void copy_words(const image_words& from, std::uint64_t first, std::uint64_t last, image_words& to,
                std::uint64_t at) {
    word_copier copier(from, to);
    for (std::uint64_t offset = first; offset <= last;) {
        note_work(offset - first, last - first + 1);
        offset += copier.copy_some(offset, last, at + (offset - first));
    }
}

} // namespace kvrimage

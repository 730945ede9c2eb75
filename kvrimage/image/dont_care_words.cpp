#include "kvrimage/image/dont_care_words.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

namespace kvrimage {

std::optional<text_run> find_dont_care_word(const image_words& words) {
    std::optional<text_run> found;
    if (words.bytes() != nullptr) {
        return found; // a byte has 8 bits that are 0 or 1
    }
    for_each_row_cycle_or_run(
        words, [](const kvr::word_row& row, std::uint64_t) { return is_plain(row.all()) ? row.count : 0U; },
        [&words](const text_cycle& cycle) {
            bool all_plain = true;
            for (std::uint64_t index = 0; index < cycle.period; ++index) {
                all_plain = all_plain && is_plain(words[cycle.first + index]);
            }
            return all_plain ? cycle.length() : 0;
        },
        [&found](const text_run& run) {
            if (!found && !is_plain(run.text)) {
                found = run;
            }
        });
    return found;
}

} // namespace kvrimage

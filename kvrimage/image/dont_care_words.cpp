#include "kvrimage/image/dont_care_words.h"

#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <string_view>

namespace kvrimage {

std::optional<std::uint64_t> find_dont_care_word(const image_words& words) {
    return find_word(
        words, 0, words.size(), [](const kvr::word_row& row) { return is_plain(row.all()); },
        [](std::string_view word) { return !is_plain(word); });
}

} // namespace kvrimage
